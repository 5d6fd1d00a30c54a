#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"

namespace larkspool {

// Shows ten times a second what arrives too fast to be drawn frame by frame.
void Window1::Timer3_Action() {
    if (!TCPSocketAudio->IsConnected()) {
        sMeter = LowestMeter; // nothing looks alive that isn't
        kiwiFlags = 0;
        kiwiAudioSequence = 0;
    }
    LabelSmeter.SetText(Str(sMeter) + " dBm " + Str(kiwiFlags) + " " + Str(kiwiAudioSequence));
    // Five units a dB; the bar is empty at -130 dBm.
    ProgressBarSmeter.SetValue(WholePart<int>((130.0 + sMeter) * 5.0));
    PushButtonRecord.SetEnabled(isConnected || IsRecording());
    CountDown();
    ShowRecordingTime();
    rigServer.Tick();
    app.WatchTheNight();
}

} // namespace larkspool
