// AdaptersLinux.cpp: the network adapters from getifaddrs; hardware addresses come
// from the AF_PACKET entries.
#include "orv/AdapterInfos.h"
#include "tools/platform/OrvPlatform.h"

#include <bitset>

#include <ifaddrs.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <netinet/in.h>

namespace orv::platform {

namespace {

AdapterInfo &adapterNamed(std::vector<AdapterInfo> &list, ifaddrs const *entry) {
    QString const name = QString::fromLocal8Bit(entry->ifa_name);
    for (AdapterInfo &adapter : list)
        if (adapter.name == name)
            return adapter;
    AdapterInfo adapter;
    adapter.name = name;
    adapter.index = ::if_nametoindex(entry->ifa_name);
    adapter.up = (entry->ifa_flags & IFF_UP) != 0;
    adapter.running = (entry->ifa_flags & IFF_RUNNING) != 0;
    adapter.loopback = (entry->ifa_flags & IFF_LOOPBACK) != 0;
    list.push_back(adapter);
    return list.back();
}

int prefixLength(sockaddr const *mask) {
    if (!mask)
        return -1;
    int bits = 0;
    if (mask->sa_family == AF_INET) {
        bits = static_cast<int>(
            std::bitset<32>(reinterpret_cast<sockaddr_in const *>(mask)->sin_addr.s_addr).count());
    } else if (mask->sa_family == AF_INET6) {
        for (unsigned char byte : reinterpret_cast<sockaddr_in6 const *>(mask)->sin6_addr.s6_addr)
            bits += static_cast<int>(std::bitset<8>(byte).count());
    } else {
        return -1;
    }
    return bits;
}

} // namespace

bool networkAdapters(std::vector<AdapterInfo> &out) {
    ifaddrs *all = nullptr;
    if (::getifaddrs(&all) != 0)
        return false;
    out.clear();
    for (ifaddrs const *entry = all; entry; entry = entry->ifa_next) {
        AdapterInfo &adapter = adapterNamed(out, entry);
        sockaddr const *addr = entry->ifa_addr;
        if (!addr)
            continue;
        if (addr->sa_family == AF_PACKET) {
            auto const *link = reinterpret_cast<sockaddr_ll const *>(addr);
            QByteArray const mac(reinterpret_cast<char const *>(link->sll_addr), link->sll_halen);
            // The loopback adapter reports six zero bytes: no hardware address.
            if (mac.count('\0') != mac.size())
                adapter.mac = mac;
        } else if (addr->sa_family == AF_INET || addr->sa_family == AF_INET6) {
            adapter.addresses.push_back({QHostAddress(addr), prefixLength(entry->ifa_netmask)});
        }
    }
    ::freeifaddrs(all);
    return true;
}

} // namespace orv::platform
