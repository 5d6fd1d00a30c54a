#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"

namespace larkspool {

void Window1::AgcChanged() {
    SendSetAGC();
    WriteAgcLabels();
    SaveSettingsForMode();
}

void Window1::WriteAgcLabels() {
    LabelAgcThreshold.SetText("Threshold " + Str(SliderAgcThreshold.Value()) + " dB");
    LabelAgcSlope.SetText("Slope " + Str(SliderAgcSlope.Value()) + " dB");
    LabelAgcManualGain.SetText("Manual Gain " + Str(SliderAgcManualGain.Value()) + " dB");
    LabelAgcDecay.SetText("Decay " + Str(SliderAgcDecay.Value()) + " ms");
}

void Window1::SliderSquelch_ValueChanged() {
    SetSquelch(SliderSquelch.Value(), Val(PopupMenuSquelchTime.Text()));
    LabelSquelch.SetText("Squelch " + Str(SliderSquelch.Value()) + " dB");
    app.prefs.prefsSquelch = SliderSquelch.Value();
}

void Window1::PopupMenuSquelchTime_Change() {
    SetSquelch(SliderSquelch.Value(), Val(PopupMenuSquelchTime.Text()));
    app.prefs.prefsSquelchTime = PopupMenuSquelchTime.ListIndex();
}

void Window1::PopupMenuDeEmphasis_Change() { SetDeEmphasis(PopupMenuDeEmphasis.ListIndex()); }

} // namespace larkspool
