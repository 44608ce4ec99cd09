#pragma once
#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QString>

class QNetworkAccessManager;
class QNetworkReply;

namespace platform::net {

// The internet transfer control: one HTTP (or HTTPS) GET at a time, either synchronous with
// the event loop turning while it waits (OpenURL), or started and polled (Execute,
// StillExecuting). A request ends when the server sends nothing for RequestTimeout seconds.
// Failures are not raised: the body is empty and ResponseCode tells why, as a WinINet code
// for a transport failure (12002 timeout, 12007 unknown host, 12029 no connection, 12030
// connection aborted) or the HTTP status for an answer of 400 and above.
class InetControl : public QObject {
    Q_OBJECT
public:
    // The states StateChanged reports.
    enum State { icResponseReceived = 8, icError = 11, icResponseCompleted = 12 };
    // A reply is read up to this size; the rest is dropped and the request ends.
    static constexpr qint64 kMaxBody = 1024 * 1024;

    explicit InetControl(QObject* parent = nullptr);
    ~InetControl() override;

    int RequestTimeout() const { return timeoutSeconds_; }
    void setRequestTimeout(int seconds) { timeoutSeconds_ = seconds; }

    // The whole body, at most kMaxBody bytes; empty when the request failed.
    QByteArray OpenURL(const QString& url);
    // Starts a GET; the body and headers are there once StillExecuting is false.
    void Execute(const QString& url);
    bool StillExecuting() const;
    void Cancel();

    QByteArray body() const { return body_; }
    QString GetHeader(const QString& name) const;
    int ResponseCode() const { return responseCode_; }
    QString ResponseInfo() const { return responseInfo_; }

signals:
    void StateChanged(int state);

private:
    void start(const QString& url);
    void receive();
    void finish();

    QNetworkAccessManager* manager_;
    QPointer<QNetworkReply> reply_;
    int timeoutSeconds_ = 60;
    QByteArray body_;
    QList<QPair<QString, QString>> headers_;
    int responseCode_ = 0;
    QString responseInfo_;
};

}  // namespace platform::net
