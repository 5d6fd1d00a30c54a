#include "console/Window1.h"
#include "link/CommandText.h"
#include "platform/Text.h"
#include "shell/App.h"

namespace larkspool {

namespace {

constexpr int Speed = 3;
constexpr int NoCompression = 0;
constexpr int Zoom = 11;

} // namespace

void Window1::RecenterWaterfall() {
    SetWaterfall(Speed, NoCompression, Zoom, Val(TextFieldFreq.Text()), waterfallWebsocket.get());
}

// freq: the center, in kHz.
void Window1::SetWaterfall(int speed, int compression, int zoom, double freq, WebsocketsClass* ws) {
    if (ws == nullptr) {
        return;
    }
    waterfallStartFreq = freq - WaterfallClass::HalfSpan;
    for (const std::string& text :
         command::Waterfall(speed, compression, zoom, *waterfallStartFreq)) {
        ws->WebsocketWrite(text);
    }
}

void Window1::ParseWaterfallData(const std::string& data) {
    if (app.prefs.prefsUpdateWaterfall) {
        WaterfallCanvas.NewData(data);
    }
}

void Window1::SliderWaterfallMinDb_ValueChanged() {
    waterfallOffsetDb = WaterfallOffset(SliderWaterfallMinDb.Value());
    app.prefs.prefsWaterfallOffset = SliderWaterfallMinDb.Value();
    WaterfallCanvas.SetLevels(waterfallGain, waterfallOffsetDb);
    WriteWaterfallLabels();
}

void Window1::SliderWaterfallGain_ValueChanged() {
    waterfallGain = SliderWaterfallGain.Value() / 100.0;
    app.prefs.prefsWaterfallGain = SliderWaterfallGain.Value();
    WaterfallCanvas.SetLevels(waterfallGain, waterfallOffsetDb);
    WriteWaterfallLabels();
}

void Window1::CheckBoxUpdateWaterfall_Action() {
    app.prefs.prefsUpdateWaterfall = CheckBoxUpdateWaterfall.Value();
    WaterfallCanvas.SetUpdating(CheckBoxUpdateWaterfall.Value());
}

// Tunes so that the middle of the passband is at the clicked point. x: in points from the canvas's
// left edge; 1024 points are the whole span, whatever the canvas's width.
bool Window1::WaterfallCanvas_MouseDown(int x) {
    if (!CheckBoxUpdateWaterfall.Value() || !waterfallStartFreq) {
        return true;
    }
    const double middle = (static_cast<double>(lowCut) + static_cast<double>(hiCut)) / 2000.0;
    const double freq =
        x * WaterfallClass::HalfSpan * 2.0 / WaterfallClass::Bins + *waterfallStartFreq - middle;
    TextFieldFreq.SetText(Str(freq));
    return false;
}

void Window1::WriteWaterfallLabels() {
    LabelWaterfallGain.SetText("Waterfall Gain: " + Format(waterfallGain, "##.00"));
    LabelWaterfallMinDb.SetText("Waterfall min " + Str(WaterfallMinimum(waterfallOffsetDb)) +
                                " db");
}

} // namespace larkspool
