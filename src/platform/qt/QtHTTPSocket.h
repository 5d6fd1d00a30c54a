#pragma once

#include "platform/HTTPSocket.h"
#include "platform/qt/DeleteLater.h"

#include <QByteArray>
#include <QNetworkReply>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

class QNetworkAccessManager;

namespace larkspool {

class Desktop;

// Fetches by QNetworkAccessManager, which all sockets share and which is made at the first fetch.
// Owned by the caller of Desktop::MakeHTTPSocket.
class QtHTTPSocket : public HTTPSocket {
  public:
    using Manager = std::function<QNetworkAccessManager&()>;

    QtHTTPSocket(Desktop& theDesktop, Manager shared);
    ~QtHTTPSocket() override;

    void Get(const std::string& url) override;

  private:
    void Start();
    void Collect();
    void Finish();
    int Unpack();
    void AskWhyNotFound();
    void Fail(int code);
    void Cancel();

    Desktop& desktop;
    Manager manager;
    std::string address;
    QByteArray body;
    OwnedByLoop<QNetworkReply> reply;
    int lookup = -1; // the running host lookup
    QTimer start;    // the fetch begins at the loop's next turn
    QTimer timeLimit;
};

} // namespace larkspool
