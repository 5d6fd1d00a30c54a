#include "console/Window1.h"
#include "directory/PastedUrl.h"
#include "platform/Text.h"

namespace larkspool {

// The scheduler uses the console as a user would: it fills in the fields and presses Disconnect.
// The recording starts when the receiver has sent its audio rate.
void Window1::ConnectAndRecord(const std::string& url, const std::string& freq,
                               const std::string& mode, const std::string& filter) {
    const auto receiver = ParseReceiverCell(url);
    if (!receiver) {
        Log("Entry can't be carried out: no address and port in \"" + url + "\"");
        return;
    }
    if (!Visible()) {
        Show();
    }
    TextFieldAddress.SetText(receiver->host);
    TextFieldPort.SetText(receiver->port);
    TextFieldFreq.SetText(freq);
    SetMode(mode);
    SetPassbandTexts(filter); // after the mode, which sets its own passband
    PushDisconnectButton();
    ArmRecording(RecordingWish::OfEntry);
    whyNotRecorded = "no sound came before its end";
    ConnectSoon();
}

void Window1::EndEntry() {
    if (startRecordingWhenConnected) {
        Log("Entry was not recorded: " + std::string(whyNotRecorded) +
            ". Last status: " + LabelStatus.Text());
    }
    EndSession();
    DisarmRecording(RecordingWish::OfEntry);
}

void Window1::SetMode(const std::string& mode) {
    bool isKnown = false;
    for (int row = 0; row < PopupMenuMode.ListCount(); ++row) {
        if (PopupMenuMode.RowText(row) == mode) {
            PopupMenuMode.SetListIndex(row);
            isKnown = true;
        }
    }
    if (!isKnown) {
        Log("No such mode: \"" + mode + "\". The entry is received in " + PopupMenuMode.Text());
    }
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
