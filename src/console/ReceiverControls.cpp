#include "console/ReceiverControls.h"

#include "platform/Text.h"

#include <initializer_list>
#include <string>
#include <utility>

namespace larkspool {

namespace {

// In dBm. Five units of the bar are one dB; the empty bar is -130 dBm.
double SmeterLevel(int value) { return value / 5.0 - 130.0; }

void Speak(Slider& slider, std::string name, const std::string& unit) {
    slider.spokenName = std::move(name);
    slider.spokenValue = [unit](int value) { return Str(value) + unit; };
}

} // namespace

void ReceiverControls::CreateControls() {
    CreateTopRows();
    CreateTuningRow();
    CreateGainRows();
    CreateWaterfallRows();
    CreateHiddenControls();
    NameForScreenReaders();
    NameLongestTexts();
}

void ReceiverControls::Make(Control& control, std::string name, Rect place, Locks locks) {
    control.Place(std::move(name), place, locks);
    made.push_back(&control);
}

void ReceiverControls::Make(Label& label, std::string name, Rect place, std::string text) {
    Make(label, std::move(name), place);
    label.SetText(std::move(text));
}

void ReceiverControls::Make(TextField& field, std::string name, Rect place, std::string text) {
    Make(field, std::move(name), place);
    field.SetText(std::move(text));
}

void ReceiverControls::Make(CheckBox& box, std::string name, Rect place, std::string caption,
                            Locks locks) {
    Make(box, std::move(name), place, locks);
    box.caption = std::move(caption);
}

void ReceiverControls::Make(PushButton& button, std::string name, Rect place, std::string caption) {
    Make(button, std::move(name), place);
    button.SetCaption(std::move(caption));
}

void ReceiverControls::Make(PopupMenu& popup, std::string name, Rect place,
                            std::initializer_list<const char*> rows) {
    Make(popup, std::move(name), place);
    for (const char* row : rows) {
        popup.AddRow(row);
    }
    popup.SetListIndex(0);
}

void ReceiverControls::Make(Slider& slider, std::string name, Rect place, Range range, int value) {
    Make(slider, std::move(name), place);
    slider.SetRange(range.low, range.high);
    slider.SetValue(value);
}

void ReceiverControls::CreateTopRows() {
    Make(Label5, "Label5", {20, 21, 49, 20}, "Name:");
    Make(TextFieldIdentity, "TextFieldIdentity", {81, 20, 102, 22}, "");
    Make(TextFieldGeoLocation, "TextFieldGeoLocation", {191, 20, 213, 22}, "");
    TextFieldIdentity.placeholder = "Your name";
    TextFieldGeoLocation.placeholder = "Your location";
    Make(Label7, "Label7", {423, 21, 59, 20}, "Pre-Emp:");
    Make(PopupMenuDeEmphasis, "PopupMenuDeEmphasis", {491, 20, 80, 20}, {"Off", "75 us", "50 us"});
    Make(Label6, "Label6", {587, 21, 89, 20}, "Audio Device:");
    Make(SoundOutputPopupMenu, "SoundOutputPopupMenu", {680, 20, 196, 20}, {});
    Make(OutputVolumeSlider, "OutputVolumeSlider", {888, 21, 100, 23}, {0, 1000}, 1000);
    Make(TextFieldAddress, "TextFieldAddress", {20, 55, 183, 22}, "");
    Make(TextFieldPort, "TextFieldPort", {215, 55, 52, 22}, "8073");
    Make(PushButtonConnect, "PushButtonConnect", {273, 56, 80, 20}, "Connect");
    Make(PushButtonDisconnect, "PushButtonDisconnect", {365, 56, 91, 20}, "Disconnect");
    Make(PopupMenuKiwiList, "PopupMenuKiwiList", {468, 56, 399, 20}, {});
    Make(CheckBoxReconnect, "CheckBoxReconnect", {888, 56, 100, 20}, "Reconnect");
}

void ReceiverControls::CreateTuningRow() {
    Make(PopupMenuMode, "PopupMenuMode", {20, 90, 80, 20}, {});
    Make(TextFieldFreq, "TextFieldFreq", {118, 89, 80, 22}, "1280");
    Make(Label1, "Label1", {210, 90, 35, 20}, "kHz");
    Make(Label2, "Label2", {274, 90, 58, 20}, "IF Filter:");
    Make(TextFieldLowCut, "TextFieldLowCut", {353, 89, 80, 22}, "-2500");
    Make(Label4, "Label4", {442, 90, 20, 20}, "-");
    Make(TextFieldHighCut, "TextFieldHighCut", {460, 89, 80, 22}, "");
    Make(Label3, "Label3", {559, 91, 30, 20}, "Hz");
    Make(ProgressBarSmeter, "ProgressBarSmeter", {620, 91, 215, 20});
    ProgressBarSmeter.maximum = 1300;
    Make(LabelSmeter, "LabelSmeter", {862, 90, 182, 20}, "-");
}

void ReceiverControls::CreateGainRows() {
    Make(CheckBoxAgc, "CheckBoxAgc", {20, 123, 58, 20}, "AGC");
    CheckBoxAgc.SetValue(true);
    Make(SliderAgcThreshold, "SliderAgcThreshold", {93, 124, 100, 23}, {-130, 0}, -77);
    Make(LabelAgcThreshold, "LabelAgcThreshold", {208, 123, 133, 20}, "Untitled");
    Make(SliderAgcDecay, "SliderAgcDecay", {364, 123, 100, 23}, {0, 5000}, 0);
    Make(LabelAgcDecay, "LabelAgcDecay", {476, 123, 132, 20}, "Untitled");
    Make(SliderSquelch, "SliderSquelch", {583, 123, 100, 23}, {0, 40}, 21);
    Make(LabelSquelch, "LabelSquelch", {695, 123, 100, 20}, "Untitled");
    Make(PopupMenuSquelchTime, "PopupMenuSquelchTime", {807, 122, 80, 20},
         {"0 sec", "0.2 sec", "0.5 sec", "1 sec", "2 sec"});
    Make(TextFieldSquelchedDeadSpace, "TextFieldSquelchedDeadSpace", {899, 122, 44, 22}, "");
    Make(Label8, "Label8", {950, 122, 102, 20}, "Squelched dead");
    Make(CheckBoxHang, "CheckBoxHang", {20, 155, 61, 20}, "Hang");
    Make(SliderAgcSlope, "SliderAgcSlope", {93, 155, 100, 23}, {0, 10}, 0);
    Make(LabelAgcSlope, "LabelAgcSlope", {208, 155, 130, 20}, "Untitled");
    Make(SliderAgcManualGain, "SliderAgcManualGain", {364, 159, 100, 23}, {0, 120}, 0);
    Make(LabelAgcManualGain, "LabelAgcManualGain", {476, 155, 132, 20}, "Untitled");
    Make(PushButtonRecord, "PushButtonRecord", {688, 155, 125, 20}, "Start Recording");
    PushButtonRecord.SetEnabled(false);
    Make(LabelRecordingStatus, "LabelRecordingStatus", {821, 157, 225, 20}, "");
    Make(CheckBoxNetwork, "CheckBoxNetwork", {20, 187, 100, 20}, "Network");
    Make(LabelStreaming, "LabelStreaming", {132, 187, 100, 20}, "Streaming");
}

void ReceiverControls::CreateWaterfallRows() {
    Make(LabelStatus, "LabelStatus", {20, 214, 407, 20}, "-");
    Make(SliderWaterfallGain, "SliderWaterfallGain", {460, 214, 100, 23}, {0, 500}, 222);
    Make(LabelWaterfallGain, "LabelWaterfallGain", {572, 214, 124, 20}, "Untitled");
    Make(SliderWaterfallMinDb, "SliderWaterfallMinDb", {708, 214, 100, 23}, {137, 200}, 200);
    Make(LabelWaterfallMinDb, "LabelWaterfallMinDb", {820, 214, 136, 20}, "Untitled");
    Make(CheckBoxUpdateWaterfall, "CheckBoxUpdateWaterfall", {972, 214, 80, 20}, "Update",
         {.left = false, .top = true, .right = true});
    Make(WaterfallCanvas, "WaterfallCanvas", {26, 246, 1024, 105},
         {.left = true, .top = true, .right = true});
}

void ReceiverControls::CreateHiddenControls() {
    constexpr std::size_t LogRows = 2000;
    constexpr std::size_t LogRowLength = 1000;
    Make(TextArea1, "TextArea1", {26, 372, 551, 277});
    Make(TextArea2, "TextArea2", {592, 372, 452, 277});
    Make(Listbox1, "Listbox1", {20, 679, 1024, 281});
    Listbox1.maximumRows = LogRows;
    Listbox1.maximumRowLength = LogRowLength;
    Make(PushButtonClearListbox, "PushButtonClearListbox", {950, 654, 80, 20}, "Clear");
}

void ReceiverControls::NameLongestTexts() {
    LabelSmeter.longest = "-127.5 dBm 128 4294967295";
    LabelAgcThreshold.longest = "Threshold -130 dB";
    LabelAgcSlope.longest = "Slope 10 dB";
    LabelAgcManualGain.longest = "Manual Gain 120 dB";
    LabelAgcDecay.longest = "Decay 5000 ms";
    LabelSquelch.longest = "Squelch 40 dB";
    LabelStreaming.longest = "Streaming on";
    LabelRecordingStatus.longest = "00:00:00";
    LabelWaterfallGain.longest = "Waterfall Gain: 5.00";
    LabelWaterfallMinDb.longest = "Waterfall min -120 db";
    LabelStatus.longest = "20250 samples/sec    1234567 bytes/sec";
    LabelStatus.mayBeCut = true;
}

void ReceiverControls::NameForScreenReaders() {
    TextFieldIdentity.spokenName = "Your name";
    TextFieldGeoLocation.spokenName = "Your location";
    Label7.buddy = &PopupMenuDeEmphasis;
    PopupMenuDeEmphasis.spokenName = "Pre-emphasis";
    Label6.buddy = &SoundOutputPopupMenu;
    SoundOutputPopupMenu.spokenName = "Audio device";
    TextFieldAddress.spokenName = "Receiver address";
    TextFieldPort.spokenName = "Receiver port";
    PopupMenuKiwiList.spokenName = "Receivers";
    PopupMenuMode.spokenName = "Mode";
    TextFieldFreq.spokenName = "Frequency in kHz";
    TextFieldLowCut.spokenName = "Passband low edge in Hz";
    TextFieldHighCut.spokenName = "Passband high edge in Hz";
    ProgressBarSmeter.spokenName = "S-meter";
    ProgressBarSmeter.quantity = SmeterLevel;
    ProgressBarSmeter.unit = "dBm";
    PopupMenuSquelchTime.spokenName = "Squelch tail";
    TextFieldSquelchedDeadSpace.spokenName = "Squelched dead space in seconds";
    CheckBoxUpdateWaterfall.spokenName = "Update waterfall";
    WaterfallCanvas.spokenName = "Waterfall";
    TextArea1.spokenName = "Connection replies";
    TextArea2.spokenName = "Notes";
    Listbox1.spokenName = "Log";
    OutputVolumeSlider.spokenName = "Volume";
    OutputVolumeSlider.spokenValue = [](int value) { return Str(value / 10) + " percent"; };
    Speak(SliderAgcThreshold, "AGC threshold", " dB");
    Speak(SliderAgcDecay, "AGC decay", " ms");
    Speak(SliderAgcSlope, "AGC slope", " dB");
    Speak(SliderAgcManualGain, "Manual gain", " dB");
    Speak(SliderSquelch, "Squelch", " dB");
    SliderWaterfallGain.spokenName = "Waterfall gain";
    SliderWaterfallGain.spokenValue = [](int value) { return Format(value / 100.0, "0.00"); };
    SliderWaterfallMinDb.spokenName = "Waterfall minimum";
    SliderWaterfallMinDb.spokenValue = [](int value) {
        return Str(WaterfallMinimum(WaterfallOffset(value))) + " dB";
    };
}

} // namespace larkspool
