// QtPeerServer.cpp: the peer of `orv serve` under wrk: a minimal QTcpServer on one
// event loop that answers every request head with the reply `orv serve` gives for
// the same file, keeping connections open, until killed.
//   orv_bench_net_qt_peer FILE PORT    (listens on 127.0.0.1)
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

#include <cstdio>
#include <cstdlib>
#include <memory>

int main(int argc, char **argv) {
    QCoreApplication app(argc, argv);
    QFile file(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString());
    if (argc != 3 || !file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "usage: orv_bench_net_qt_peer FILE PORT\n");
        return 2;
    }
    QByteArray const body = file.readAll();
    // The fields and their order of `orv serve`'s answer for a .txt file.
    QByteArray const reply = "HTTP/1.1 200 OK\r\nConnection: keep-alive\r\nContent-Length: " +
                             QByteArray::number(body.size()) +
                             "\r\nContent-Type: text/html\r\n\r\n" + body;
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost, static_cast<quint16>(std::atoi(argv[2]))))
        return 1;
    QObject::connect(&server, &QTcpServer::newConnection, [&] {
        while (QTcpSocket *socket = server.nextPendingConnection()) {
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            auto const pending = std::make_shared<QByteArray>();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket, pending, &reply] {
                *pending += socket->readAll();
                for (int end; (end = pending->indexOf("\r\n\r\n")) >= 0;) {
                    pending->remove(0, end + 4);
                    socket->write(reply);
                }
            });
        }
    });
    return app.exec();
}
