#include "desktop/orbit/network_fetcher.h"

#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslError>
#include <QSslSocket>
#include <QTimer>
#include <QUrl>
#include <utility>

#include "desktop/main/bindings.h"
#include "orbit/download_sources.h"
#include "state/version.h"

namespace glintara::desktop {

namespace {

constexpr int kMostRedirections = 10;

/// Bytes that wait to be read before the server is kept waiting.
constexpr qint64 kReadAhead = qint64{1} << 20;

bool IsWeb(const QUrl& url) { return url.scheme() == "http" || url.scheme() == "https"; }

class SystemProxies : public QNetworkProxyFactory {
  public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override { return systemProxyForQuery(query); }
};

/// A request that cannot be made.
class FailedTransfer : public Transfer {
  public:
    explicit FailedTransfer(std::string failure) : failure_(std::move(failure)) {}

    ReadStep Read(std::string& /*part*/) override { return ReadStep::Failed; }
    int Status() const override { return 0; }
    std::string Failure() const override { return failure_; }

  private:
    std::string failure_;
};

class NetworkTransfer : public Transfer {
  public:
    NetworkTransfer(QNetworkReply* reply, int longestSilence) : reply_(reply), longestSilence_(longestSilence) {
        reply_->setReadBufferSize(kReadAhead);
        silence_.setSingleShot(true);
        QObject::connect(
            &silence_, &QTimer::timeout, reply, [this] { NothingCame(); });
        const auto heard = [this] { silence_.start(longestSilence_); };
        QObject::connect(reply, &QIODevice::readyRead, &silence_, heard);
        QObject::connect(reply, &QNetworkReply::downloadProgress, &silence_, heard);
        QObject::connect(reply, &QNetworkReply::metaDataChanged, &silence_, heard);
        QObject::connect(reply, &QNetworkReply::redirected, &silence_, heard);
        QObject::connect(reply, &QNetworkReply::encrypted, &silence_, heard);
        QObject::connect(reply, &QNetworkReply::sslErrors, &silence_, [this](const QList<QSslError>& errors) {
            if (!errors.isEmpty()) distrust_ = FromQt(errors.first().errorString());
        });
        heard();
    }
    NetworkTransfer(const NetworkTransfer&) = delete;
    NetworkTransfer& operator=(const NetworkTransfer&) = delete;
    ~NetworkTransfer() override {
        reply_->disconnect(&silence_);
        reply_->abort();
        reply_->deleteLater();
    }

    ReadStep Read(std::string& part) override {
        if (silent_) return ReadStep::Failed;
        // What there is of an answer whose end failed is of no use.
        const bool failed = reply_->isFinished() && !HasAnswer();
        if (failed) return ReadStep::Failed;
        if (Status() != 0 && reply_->bytesAvailable() > 0) {
            part.resize(kReadBytes);
            const qint64 count = reply_->read(part.data(), static_cast<qint64>(kReadBytes));
            part.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
            received_ += part.size();
            if (!part.empty()) return ReadStep::Data;
        }
        if (!reply_->isFinished()) return ReadStep::Waiting;
        return IsWhole() ? ReadStep::End : ReadStep::Failed;
    }

    int Status() const override { return reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(); }

    std::string Failure() const override {
        const std::string host = FromQt(reply_->url().host());
        if (silent_)
            return host + " has sent nothing for " + std::to_string(longestSilence_ / 1000) +
                   " seconds. Is this computer connected to the Internet?";
        switch (reply_->error()) {
            case QNetworkReply::HostNotFoundError:
                return "there is no host " + host + ". Is this computer connected to the Internet?";
            case QNetworkReply::ConnectionRefusedError:
                return host + " refuses the connection";
            case QNetworkReply::SslHandshakeFailedError:
                return host + " cannot be trusted" + (distrust_.empty() ? "" : ": " + distrust_) +
                       ". Is the date of this computer right?";
            case QNetworkReply::TooManyRedirectsError:
                return "the server leads round in a circle";
            case QNetworkReply::InsecureRedirectError:
                return "the server leads to an address that is not encrypted";
            case QNetworkReply::ProtocolUnknownError:
                return "the server leads to an address that is neither http nor https";
            case QNetworkReply::ProxyConnectionRefusedError:
            case QNetworkReply::ProxyConnectionClosedError:
            case QNetworkReply::ProxyNotFoundError:
            case QNetworkReply::ProxyTimeoutError:
                return "the proxy of this computer cannot be reached";
            case QNetworkReply::ProxyAuthenticationRequiredError:
                return "the proxy of this computer asks for a password";
            case QNetworkReply::NoError:
            case QNetworkReply::RemoteHostClosedError:
                return "the connection broke off before the end";
            default:
                return FromQt(reply_->errorString()).empty() ? "the network failed" : FromQt(reply_->errorString());
        }
    }

  private:
    void NothingCame() {
        if (reply_->isFinished()) return;
        if (reply_->bytesAvailable() > 0) {
            // It is the program that has not read yet.
            silence_.start(longestSilence_);
            return;
        }
        silent_ = true;
        reply_->abort();
    }

    /// Whether the server has answered in full, be it with an error of its own.
    bool HasAnswer() const {
        constexpr int kFirstErrorStatus = 400;
        return reply_->error() == QNetworkReply::NoError || Status() >= kFirstErrorStatus;
    }

    bool IsWhole() const {
        const QVariant told = reply_->header(QNetworkRequest::ContentLengthHeader);
        const bool packed = reply_->hasRawHeader("Content-Encoding");
        return packed || !told.isValid() || told.toULongLong() == received_;
    }

    QNetworkReply* reply_;
    const int longestSilence_;
    QTimer silence_;
    bool silent_ = false;
    std::string distrust_;
    qulonglong received_ = 0;
};

}  // namespace

NetworkFetcher::NetworkFetcher(int longestSilence) : longestSilence_(longestSilence) {}

NetworkFetcher::~NetworkFetcher() = default;

std::unique_ptr<Transfer> NetworkFetcher::Open(const std::string& address) {
    const QUrl url(ToQt(address), QUrl::StrictMode);
    if (!url.isValid() || !IsWeb(url) || url.host().isEmpty())
        return std::make_unique<FailedTransfer>("this is no address of the web: " + address);
    if (url.scheme() == "https" && !QSslSocket::supportsSsl())
        return std::make_unique<FailedTransfer>(
            "this computer has no library for encrypted connections; install OpenSSL (the package libssl3)");
    if (!manager_) {
        manager_ = std::make_unique<QNetworkAccessManager>();
        manager_->setProxyFactory(new SystemProxies);
        manager_->setRedirectPolicy(QNetworkRequest::NoLessSafeRedirectPolicy);
    }
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::UserAgentHeader, ToQt("Glintara/" + std::string(kVersion)));
    request.setMaximumRedirectsAllowed(kMostRedirections);
    return std::make_unique<NetworkTransfer>(manager_->get(request), longestSilence_);
}

}  // namespace glintara::desktop
