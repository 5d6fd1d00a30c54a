#include "console/Window1.h"
#include "directory/ReceiverList.h"
#include "platform/Text.h"

namespace larkspool {

// The scheduler's way into the console, which it uses as a user would: it fills in the fields and
// presses Disconnect. The recording starts once the receiver has told its audio rate.
void Window1::ConnectAndRecord(const std::string& url, const std::string& freq,
                               const std::string& mode, const std::string& filter) {
    const auto receiver = SplitHostAndPort(url);
    if (!receiver) {
        return;
    }
    if (!Visible()) {
        Show();
    }
    TextFieldAddress.SetText(std::string(receiver->host));
    TextFieldPort.SetText(std::string(receiver->port));
    TextFieldFreq.SetText(freq);
    for (int row = 0; row < PopupMenuMode.ListCount(); ++row) {
        if (PopupMenuMode.RowText(row) == mode) {
            PopupMenuMode.SetListIndex(row);
        }
    }
    SetPassbandTexts(filter); // behind the mode, which brings its own passband
    PushDisconnectButton();
    ArmRecording(RecordingWish::OfEntry);
    ConnectSoon();
}

void Window1::EndEntry() {
    EndSession();
    DisarmRecording(RecordingWish::OfEntry);
}

// "-2600,2600", or one number for both sides.
void Window1::SetPassbandTexts(const std::string& filter) {
    const auto edges = SplitB(filter, ",");
    if (edges.size() == 2) {
        TextFieldLowCut.SetText(std::string(edges[0]));
        TextFieldHighCut.SetText(std::string(edges[1]));
    } else {
        TextFieldLowCut.SetText("-" + filter);
        TextFieldHighCut.SetText(filter);
    }
}

} // namespace larkspool
