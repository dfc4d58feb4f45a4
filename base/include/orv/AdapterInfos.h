// AdapterInfos.h: the network adapters of this machine with their hardware and IP
// addresses, read from the system at scan().
//
//   orv::AdapterInfos infos;
//   if (infos.scan())
//       for (orv::AdapterInfo const &a : infos.adapters())
//           use(a.name, a.macText(), a.addresses);
#pragma once

#include "orv/OrvGlobal.h"
#include "orv/XError.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtNetwork/QHostAddress>

#include <vector>

namespace orv {

struct ORV_EXPORT AdapterAddress {
    QHostAddress address;
    int prefixLength = -1; // bits of the netmask, -1 when the system gives none
};

struct ORV_EXPORT AdapterInfo {
    QString name;
    unsigned int index = 0;
    bool up = false;
    bool running = false;
    bool loopback = false;
    QByteArray mac; // hardware address, empty when the adapter has none
    std::vector<AdapterAddress> addresses;

    // "aa:bb:cc:dd:ee:ff", or "" without a hardware address.
    QString macText() const;
};

class ORV_EXPORT AdapterInfos : public XError {
public:
    // Reads the list anew; false with the system's error and a log line.
    bool scan();
    std::vector<AdapterInfo> const &adapters() const { return list; }
    // The adapter of that name, or null.
    AdapterInfo const *find(QString const &name) const;
    // One DEBUG line per adapter and per address.
    void show(unsigned int space) const;

private:
    std::vector<AdapterInfo> list;
};

} // namespace orv
