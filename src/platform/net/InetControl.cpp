#include "platform/net/InetControl.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace platform::net {

namespace {

// The WinINet code of a transport failure, as the control reports it.
int winInetCode(QNetworkReply::NetworkError error) {
    switch (error) {
        case QNetworkReply::TimeoutError:
        case QNetworkReply::OperationCanceledError:
            return 12002;
        case QNetworkReply::HostNotFoundError:
            return 12007;
        case QNetworkReply::ConnectionRefusedError:
            return 12029;
        case QNetworkReply::RemoteHostClosedError:
            return 12030;
        case QNetworkReply::SslHandshakeFailedError:
            return 12157;
        default:
            return 12152;
    }
}

}  // namespace

InetControl::InetControl(QObject* parent)
    : QObject(parent), manager_(new QNetworkAccessManager(this)) {}

InetControl::~InetControl() {
    Cancel();
}

void InetControl::start(const QString& url) {
    Cancel();
    body_.clear();
    responseCode_ = 0;
    responseInfo_.clear();
    QNetworkRequest request{QUrl(url)};
    request.setTransferTimeout(timeoutSeconds_ * 1000);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    reply_ = manager_->get(request);
    connect(reply_, &QNetworkReply::readyRead, this, &InetControl::receive);
    connect(reply_, &QNetworkReply::finished, this, &InetControl::finish);
}

void InetControl::receive() {
    if (!reply_) {
        return;
    }
    body_ += reply_->read(kMaxBody - body_.size());
    emit StateChanged(icResponseReceived);
    if (body_.size() >= kMaxBody) {
        reply_->disconnect(this);
        reply_->abort();
        reply_->deleteLater();
        reply_ = nullptr;
        emit StateChanged(icResponseCompleted);
    }
}

void InetControl::finish() {
    if (!reply_) {
        return;
    }
    QNetworkReply* reply = reply_;
    reply_ = nullptr;
    body_ += reply->read(kMaxBody - body_.size());
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const bool transportFailed = reply->error() != QNetworkReply::NoError && status == 0;
    if (transportFailed) {
        responseCode_ = winInetCode(reply->error());
        responseInfo_ = reply->errorString();
        body_.clear();
    } else if (status >= 400) {
        responseCode_ = status;
        responseInfo_ = reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
    }
    headers_.clear();
    for (const auto& [name, value] : reply->rawHeaderPairs()) {
        headers_.append({QString::fromLatin1(name), QString::fromLatin1(value)});
    }
    reply->deleteLater();
    emit StateChanged(transportFailed ? icError : icResponseCompleted);
}

QByteArray InetControl::OpenURL(const QString& url) {
    start(url);
    QEventLoop loop;
    connect(this, &InetControl::StateChanged, &loop, [&loop, this](int) {
        if (!reply_) {
            loop.quit();
        }
    });
    if (reply_) {
        loop.exec();
    }
    return body_;
}

void InetControl::Execute(const QString& url) {
    start(url);
}

bool InetControl::StillExecuting() const {
    return !reply_.isNull();
}

void InetControl::Cancel() {
    if (reply_) {
        QNetworkReply* reply = reply_;
        reply_ = nullptr;
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
}

QString InetControl::GetHeader(const QString& name) const {
    for (const auto& [header, value] : headers_) {
        if (header.compare(name, Qt::CaseInsensitive) == 0) {
            return value;
        }
    }
    return {};
}

}  // namespace platform::net
