#include "platform/qt/QtHTTPSocket.h"

#include "platform/Desktop.h"
#include "platform/qt/Gunzip.h"

#include <QHostInfo>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QUrl>

#include <cerrno>
#include <utility>

namespace larkspool {

namespace {

constexpr int Patience = 30'000;                        // ms
constexpr qint64 LargestBody = qint64{8} * 1024 * 1024; // bytes
constexpr qint64 ReceiveBuffer = qint64{256} * 1024;    // bytes
constexpr int MostRedirects = 10;

QNetworkRequest MakeRequest(const QUrl& url) {
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(MostRedirects);
    // With this header Qt leaves the page packed. By default it unpacks the page, but takes the
    // beginning of a truncated one for the whole.
    request.setRawHeader("Accept-Encoding", "gzip");
    return request;
}

// Qt reports a page with a status such as 404 as an error too; those pages are whole.
bool CameWhole(QNetworkReply::NetworkError error) {
    return error == QNetworkReply::NoError ||
           (error >= QNetworkReply::ContentAccessDenied &&
            error <= QNetworkReply::UnknownContentError) ||
           (error >= QNetworkReply::InternalServerError &&
            error <= QNetworkReply::UnknownServerError);
}

int ErrorCode(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::TooManyRedirectsError:
    case QNetworkReply::InsecureRedirectError:
        return ELOOP;
    case QNetworkReply::ProtocolUnknownError:
    case QNetworkReply::ProtocolInvalidOperationError:
    case QNetworkReply::ProtocolFailure:
        return EPROTO;
    default:
        return ErrorLostConnection;
    }
}

} // namespace

QtHTTPSocket::QtHTTPSocket(Desktop& theDesktop, Manager shared)
    : desktop(theDesktop), manager(std::move(shared)) {
    start.setSingleShot(true);
    timeLimit.setSingleShot(true);
    QObject::connect(&start, &QTimer::timeout, &start, [this] { Start(); });
    QObject::connect(&timeLimit, &QTimer::timeout, &timeLimit,
                     [this] { Fail(ErrorLostConnection); });
}

QtHTTPSocket::~QtHTTPSocket() { Cancel(); }

void QtHTTPSocket::Get(const std::string& url) {
    Cancel();
    address = url;
    start.start(0);
}

void QtHTTPSocket::Start() {
    const QUrl url(QString::fromStdString(address));
    const bool isWeb =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!url.isValid() || !isWeb || url.host().isEmpty()) {
        Fail(EINVAL);
        return;
    }
    timeLimit.start(Patience);
    reply.reset(manager().get(MakeRequest(url)));
    reply->setReadBufferSize(ReceiveBuffer);
    QObject::connect(reply.get(), &QNetworkReply::readyRead, &timeLimit, [this] { Collect(); });
    QObject::connect(reply.get(), &QNetworkReply::finished, &timeLimit, [this] { Finish(); });
}

void QtHTTPSocket::Collect() {
    body += reply->readAll();
    if (body.size() > LargestBody) {
        Fail(EFBIG);
    }
}

void QtHTTPSocket::Finish() {
    body += reply->readAll();
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (body.size() > LargestBody) {
        Fail(EFBIG);
    } else if (reply->error() == QNetworkReply::HostNotFoundError) {
        AskWhyNotFound();
    } else if (status == 0 || !CameWhole(reply->error())) {
        Fail(ErrorCode(reply->error()));
    } else if (const int failure = Unpack(); failure != 0) {
        Fail(failure);
    } else {
        const std::string content = std::exchange(body, QByteArray()).toStdString();
        Cancel();
        const std::string url = address;
        const auto handler = pageReceived;
        if (handler) {
            desktop.Raise([&] { handler(url, status, content); });
        }
    }
}

// The header says which encoding was sent. Returns 0 or an error code.
int QtHTTPSocket::Unpack() {
    const QByteArray encoding = reply->rawHeader("Content-Encoding").trimmed().toLower();
    if (encoding.isEmpty() || encoding == "identity") {
        return 0;
    }
    if (encoding != "gzip" && encoding != "x-gzip") {
        return EPROTO;
    }
    Gunzipped unpacked = Gunzip(body, LargestBody);
    body = std::move(unpacked.bytes);
    switch (unpacked.outcome) {
    case Gunzipped::Outcome::Whole:
        return 0;
    case Gunzipped::Outcome::Cut:
        return ErrorLostConnection;
    case Gunzipped::Outcome::TooLarge:
        return EFBIG;
    case Gunzipped::Outcome::Broken:
        break;
    }
    return EPROTO;
}

// The reply has one error for a name that doesn't exist and a resolver that can't answer now.
void QtHTTPSocket::AskWhyNotFound() {
    lookup = QHostInfo::lookupHost(reply->url().host(), &timeLimit, [this](const QHostInfo& host) {
        lookup = -1;
        Fail(host.error() == QHostInfo::HostNotFound ? ErrorNoSuchName : ErrorLostConnection);
    });
}

void QtHTTPSocket::Fail(int code) {
    Cancel();
    const auto handler = error;
    if (handler) {
        desktop.Raise([&] { handler(code); });
    }
}

void QtHTTPSocket::Cancel() {
    start.stop();
    timeLimit.stop();
    body.clear();
    if (lookup >= 0) {
        QHostInfo::abortHostLookup(std::exchange(lookup, -1));
    }
    if (reply) {
        reply->disconnect(&timeLimit);
        reply->abort();
        reply.reset();
    }
}

} // namespace larkspool
