#pragma once

#include <QByteArray>
#include <QMutex>
#include <QSemaphore>
#include <QString>
#include <QStringList>
#include <QThread>

#include <chrono>
#include <functional>
#include <vector>

namespace kb::test {

// A small HTTP server on the loopback address that answers as a Nominatim
// geocoding service does, in a thread of its own so that the code under test
// can block on its request. Each request's path, User-Agent and time are kept.
class FakeGeocodingService : public QThread
{
public:
    struct Reply
    {
        int status = 200;
        QByteArray body;
        bool silent = false; // never answer: the client must time out
    };
    using Handler = std::function<Reply(const QString& pathAndQuery)>;

    explicit FakeGeocodingService(Handler handler);
    ~FakeGeocodingService() override;

    // http://127.0.0.1:PORT
    QString address() const { return m_address; }

    struct Request
    {
        QString target;
        QString userAgent;
        std::chrono::steady_clock::time_point at;
    };
    std::vector<Request> requests() const;

    // A JSON place as the service writes it.
    static QByteArray place(double lat, double lon, const QString& addresstype, int placeRank,
                            const QString& displayName = QStringLiteral("somewhere"));

protected:
    void run() override;

private:
    Handler m_handler;
    QString m_address;
    QSemaphore m_ready;
    mutable QMutex m_mutex;
    std::vector<Request> m_requests;
};

} // namespace kb::test
