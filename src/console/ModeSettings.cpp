#include "console/Window1.h"
#include "platform/Text.h"
#include "shell/App.h"

namespace larkspool {

void Window1::PopupMenuMode_Open() {
    PopupMenuMode.DeleteAllRows();
    for (const char* caption : ModeSettingsClass::Captions) {
        PopupMenuMode.AddRow(caption);
    }
    PopupMenuMode.SetListIndex(0);
    // Until init the program fills the controls: those values must not be saved.
    okToSave = false;
}

void Window1::PopupMenuMode_Change() {
    okToSave = false;
    ChangeSettingsForMode(PopupMenuMode.ListIndex());
    SendSetModulation();
    app.prefs.prefsLastMode = static_cast<std::uint32_t>(PopupMenuMode.ListIndex());
}

void Window1::ChangeSettingsForMode(int mode) {
    if (!ModeSettingsClass::Holds(mode)) {
        return;
    }
    okToSave = false;
    const auto index = static_cast<std::size_t>(mode);
    const ModeSettingsClass& stored = app.prefs.prefsModeSettings;
    TextFieldLowCut.SetText(Str(stored.lowCut[index]));
    TextFieldHighCut.SetText(Str(stored.hiCut[index]));
    CheckBoxAgc.SetValue(stored.agc[index]);
    CheckBoxHang.SetValue(stored.hang[index]);
    SliderAgcThreshold.SetValue(stored.threshold[index]);
    SliderAgcSlope.SetValue(WholePart<int>(stored.slope[index]));
    SliderAgcDecay.SetValue(stored.decay[index]);
    SliderAgcManualGain.SetValue(stored.manualGain[index]);
    WriteAgcLabels();
    WriteWaterfallLabels();
    okToSave = true;
}

void Window1::SaveSettingsForMode() {
    const int mode = PopupMenuMode.ListIndex();
    if (!ModeSettingsClass::Holds(mode) || !okToSave) {
        return;
    }
    const auto index = static_cast<std::size_t>(mode);
    ModeSettingsClass& stored = app.prefs.prefsModeSettings;
    stored.lowCut[index] = WholePart<std::int32_t>(Val(TextFieldLowCut.Text()));
    stored.hiCut[index] = WholePart<std::int32_t>(Val(TextFieldHighCut.Text()));
    stored.agc[index] = CheckBoxAgc.Value();
    stored.hang[index] = CheckBoxHang.Value();
    stored.threshold[index] = SliderAgcThreshold.Value();
    stored.slope[index] = SliderAgcSlope.Value();
    stored.decay[index] = SliderAgcDecay.Value();
    stored.manualGain[index] = SliderAgcManualGain.Value();
}

} // namespace larkspool
