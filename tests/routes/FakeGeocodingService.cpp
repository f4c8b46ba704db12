#include "FakeGeocodingService.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>

namespace kb::test {

FakeGeocodingService::FakeGeocodingService(Handler handler) : m_handler(std::move(handler))
{
    // Event loops in threads need the application object.
    if (!QCoreApplication::instance()) {
        static int argc = 1;
        static char name[] = "routes_tests";
        static char* argv[] = {name, nullptr};
        static QCoreApplication application(argc, argv);
    }
    start();
    m_ready.acquire();
}

FakeGeocodingService::~FakeGeocodingService()
{
    quit();
    wait();
}

std::vector<FakeGeocodingService::Request> FakeGeocodingService::requests() const
{
    QMutexLocker lock(&m_mutex);
    return m_requests;
}

QByteArray FakeGeocodingService::place(double lat, double lon, const QString& addresstype, int placeRank,
                                       const QString& displayName)
{
    return QStringLiteral(R"({"place_id":1,"lat":"%1","lon":"%2","addresstype":"%3","place_rank":%4,"display_name":"%5"})")
        .arg(QString::number(lat, 'f', 7), QString::number(lon, 'f', 7), addresstype)
        .arg(placeRank)
        .arg(displayName)
        .toUtf8();
}

void FakeGeocodingService::run()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost, 0);
    m_address = QStringLiteral("http://127.0.0.1:%1").arg(server.serverPort());
    QObject::connect(&server, &QTcpServer::newConnection, &server, [&] {
        while (QTcpSocket* socket = server.nextPendingConnection()) {
            const auto answer = [this, socket] {
                const QByteArray head = socket->peek(socket->bytesAvailable());
                if (!head.contains("\r\n\r\n"))
                    return;
                socket->readAll();
                const QList<QByteArray> lines = head.split('\n');
                Request request;
                request.target = QString::fromUtf8(lines.value(0).split(' ').value(1));
                for (const QByteArray& line : lines)
                    if (line.toLower().startsWith("user-agent:"))
                        request.userAgent = QString::fromUtf8(line.mid(11)).trimmed();
                request.at = std::chrono::steady_clock::now();
                {
                    QMutexLocker lock(&m_mutex);
                    m_requests.push_back(request);
                }
                const Reply reply = m_handler(request.target);
                if (reply.silent)
                    return;
                QByteArray head2 = "HTTP/1.1 " + QByteArray::number(reply.status) +
                                    " Answer\r\nContent-Type: application/json\r\nContent-Length: " +
                                    QByteArray::number(reply.body.size()) + "\r\nConnection: close\r\n\r\n";
                socket->write(head2 + reply.body);
                socket->disconnectFromHost();
            };
            QObject::connect(socket, &QTcpSocket::readyRead, socket, answer);
            // What came before the connection was made is answered now.
            if (socket->bytesAvailable() > 0)
                answer();
            QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
    m_ready.release();
    exec();
}

} // namespace kb::test
