#include "directory/KiwiListClass.h"

#include "directory/DirectoryScanner.h"
#include "platform/Text.h"

namespace larkspool {

KiwiListClass::KiwiListClass(Desktop& theDesktop)
    : desktop(theDesktop), socket(theDesktop.MakeHTTPSocket()) {
    // Every page is read, whatever its HTTP status.
    socket->pageReceived = [this](const std::string&, int, const std::string& content) {
        Event_PageReceived(content);
    };
    socket->error = [this](int code) { Event_Error(code); };
}

void KiwiListClass::Init(const std::string& directoryHost) {
    if (directoryHost.empty()) {
        received();
    } else {
        socket->Get("http://" + directoryHost + "/public/");
    }
}

void KiwiListClass::Event_PageReceived(const std::string& content) {
    DirectoryScanner(*this).ScanPage(content);
    received();
}

void KiwiListClass::Event_Error(int code) {
    desktop.MsgBox("Could not download KiwiSDR list, error " + Str(code));
    received(); // the site's receivers and the favorites do not depend on the list
}

} // namespace larkspool
