// XSocket.cpp: the plain and TLS sockets joined to the shared blocking interface.
#include "orv/XSocket.h"
#include "orv/Log.h"

namespace orv {

XSocket::XSocket() : BasicSocket(this) {
    if (atomicFlagDebug)
        ppDebug("XSocket::XSocket");
}

XSocket::~XSocket() = default;

XSocketSSL::XSocketSSL() : BasicSocket(this) {
    if (atomicFlagDebug)
        ppDebug("XSocketSSL::XSocketSSL");
}

XSocketSSL::~XSocketSSL() = default;

void XSocketSSL::connectToHostEncrypted(QString const &host, unsigned short port) {
    QSslSocket::connectToHostEncrypted(host, port, QIODevice::ReadWrite,
                                       QAbstractSocket::AnyIPProtocol);
}

} // namespace orv
