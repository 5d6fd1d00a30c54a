#include "console/Window1.h"

#include "platform/Text.h"
#include "shell/App.h"

namespace larkspool {

namespace {

constexpr int DesignWidth = 1064;
constexpr int DesignHeight = 968;
constexpr int StartHeight = 370; // just includes the waterfall
constexpr int StatisticsPeriod = 1000;
constexpr int StreamPeriod = 20;
constexpr std::size_t SilenceBytes = 500'000; // one second at up to 250,000 samples per second

} // namespace

Window1::Window1(Desktop& theDesktop, App& application)
    : Window(theDesktop), app(application), TCPSocketAudio(theDesktop.MakeTCPSocket()),
      TCPSocketWaterfall(theDesktop.MakeTCPSocket()), Timer1(theDesktop.MakeTimer()),
      Timer3(theDesktop.MakeTimer()), RxUDPSocket(theDesktop.MakeUDPSocket()),
      Timer4(theDesktop.MakeTimer()),
      rigServer(theDesktop.MakeTCPServer(),
                [this](const RigCommand& asked) { return AnswerRig(asked); }) {
    SetTitle("Larkspool");
    SetDesignSize(DesignWidth, DesignHeight);
    minimumWidth = 1000;
    minimumHeight = 250;
    maximumWidth = 1064;
    hairlines = {83, 116, 210};
    CreateControls();
    for (Control* control : Created()) {
        AddControl(*control);
    }
    firstFocus = &PushButtonConnect; // a text field's blinking caret would repaint all night
    BindEvents();
    Timer1->SetPeriod(StatisticsPeriod);
    Timer3->SetPeriod(DisplayPeriod);
    Timer4->SetPeriod(StreamPeriod);
    PopupMenuMode_Open();
}

Window1::~Window1() = default;

void Window1::Event_Open() {
    SetHeight(StartHeight);
    TextArea1.SetVisible(false);
    TextArea2.SetVisible(false);
    Listbox1.SetVisible(false);
    PushButtonClearListbox.SetVisible(false);
    ShowStreaming();
    if (app.prefs.prefsUseNetworking) {
        InitNetworking();
        CheckBoxNetwork.SetValue(true);
    }
    FillFromPreferences();
    GetKiwiList();
    kiwiSoundSamplesMB = MemoryBlock(SilenceBytes);
    InitSoundStuff();
    CheckBoxUpdateWaterfall.SetValue(app.prefs.prefsUpdateWaterfall);
    Timer3->SetMode(Timer::Mode::Multiple);
}

void Window1::FillFromPreferences() {
    const Preferences stored = app.prefs; // a copy: the setters' events change the original
    CheckBoxReconnect.SetValue(stored.prefsReconnect);
    TextFieldAddress.SetText(stored.prefsLastURL);
    TextFieldPort.SetText(Str(stored.prefsLastPort));
    TextFieldIdentity.SetText(stored.prefsUserName);
    TextFieldGeoLocation.SetText(stored.prefsUserQTH);
    TextFieldFreq.SetText(Str(stored.prefsLastFreq));
    SliderWaterfallGain.SetValue(stored.prefsWaterfallGain);
    SliderWaterfallMinDb.SetValue(stored.prefsWaterfallOffset);
    OutputVolumeSlider.SetValue(stored.prefsLastVolume);
    PopupMenuSquelchTime.SetListIndex(stored.prefsSquelchTime);
    SliderSquelch.SetValue(stored.prefsSquelch);
    TextFieldSquelchedDeadSpace.SetText(Format(stored.prefsSquelchedDeadSpace, "#.0"));

    // A field shows fewer digits than are stored: the stored value must not lose them.
    app.prefs.prefsLastFreq = stored.prefsLastFreq;
    app.prefs.prefsSquelchedDeadSpace = stored.prefsSquelchedDeadSpace;

    // A stored value that equals a slider's first value raises no event, but the labels and levels
    // that depend on it must be set.
    SliderWaterfallGain_ValueChanged();
    SliderWaterfallMinDb_ValueChanged();
    SliderSquelch_ValueChanged();
}

void Window1::init(int mode) {
    PopupMenuMode.SetListIndex(mode);
    ChangeSettingsForMode(WholePart<int>(static_cast<double>(app.prefs.prefsLastMode)));
    okToSave = true;
}

// Ten times per second: shows what arrives too often to be drawn for each frame.
void Window1::Timer3_Action() {
    if (!TCPSocketAudio->IsConnected()) {
        sMeter = LowestMeter; // a frozen meter would look like a signal
        kiwiFlags = 0;
        kiwiAudioSequence = 0;
    }
    LabelSmeter.SetText(Str(sMeter) + " dBm " + Str(kiwiFlags) + " " + Str(kiwiAudioSequence));
    // Five units per dB; the bar is empty at -130 dBm.
    ProgressBarSmeter.SetValue(WholePart<int>((130.0 + sMeter) * 5.0));
    PushButtonRecord.SetEnabled(isConnected || IsRecording());
    CountDown();
    ShowRecordingTime();
    rigServer.Tick();
    app.WatchTheNight();
}

void Window1::Log(const std::string& row) {
    Listbox1.AddRow(row);
    app.nightLog.Add(row);
}

bool Window1::Event_CancelClose(bool appQuitting) {
    if (!appQuitting && app.EndsWith(*this)) {
        return false; // the program quits next and calls this again
    }
    EndEntry();
    if (audioWebsocket != nullptr) {
        audioWebsocket->Closing();
    }
    return false;
}

} // namespace larkspool
