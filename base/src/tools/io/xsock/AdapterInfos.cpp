// AdapterInfos.cpp: the list of network adapters and its log form.
#include "orv/AdapterInfos.h"

#include "orv/Log.h"
#include "tools/platform/OrvPlatform.h"

namespace orv {

QString AdapterInfo::macText() const { return QString::fromLatin1(mac.toHex(':')); }

bool AdapterInfos::scan() {
    clearError();
    if (platform::networkAdapters(list))
        return true;
    int const error = platform::lastSocketError();
    setErrno(error);
    ppError("AdapterInfos::scan, $", platform::socketErrorText(error));
    return false;
}

AdapterInfo const *AdapterInfos::find(QString const &name) const {
    for (AdapterInfo const &adapter : list)
        if (adapter.name == name)
            return &adapter;
    return nullptr;
}

void AdapterInfos::show(unsigned int space) const {
    for (AdapterInfo const &adapter : list) {
        ppDebug(space, "$ [$] up:$ running:$ loopback:$ mac '$'", adapter.name, adapter.index,
                adapter.up, adapter.running, adapter.loopback, adapter.macText());
        for (AdapterAddress const &address : adapter.addresses)
            ppDebug(space + 4, "$/$", address.address.toString(), address.prefixLength);
    }
}

} // namespace orv
