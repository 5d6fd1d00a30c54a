#pragma once

#include "platform/CheckBox.h"
#include "platform/Label.h"
#include "platform/Listbox.h"
#include "platform/PopupMenu.h"
#include "platform/ProgressBar.h"
#include "platform/PushButton.h"
#include "platform/Slider.h"
#include "platform/TextArea.h"
#include "platform/TextField.h"
#include "waterfall/WaterfallClass.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace larkspool {

// The controls of the console, each with its place, its first value and the name that a screen
// reader says. Part of Window1; without events until Window1 binds them.
class ReceiverControls {
  public:
    void CreateControls();
    // In tab order: later ones are drawn on top of earlier ones.
    const std::vector<Control*>& Created() const { return made; }

    // Top rows
    Label Label5; // "Name:"
    TextField TextFieldIdentity;
    TextField TextFieldGeoLocation;
    Label Label7; // "Pre-Emp:"
    PopupMenu PopupMenuDeEmphasis;
    Label Label6; // "Audio Device:"
    PopupMenu SoundOutputPopupMenu;
    Slider OutputVolumeSlider;
    TextField TextFieldAddress;
    TextField TextFieldPort;
    PushButton PushButtonConnect;
    PushButton PushButtonDisconnect;
    PopupMenu PopupMenuKiwiList;
    CheckBox CheckBoxReconnect;

    // Tuning row
    PopupMenu PopupMenuMode;
    TextField TextFieldFreq;
    Label Label1; // "kHz"
    Label Label2; // "IF Filter:"
    TextField TextFieldLowCut;
    Label Label4; // "-"
    TextField TextFieldHighCut;
    Label Label3; // "Hz"
    ProgressBar ProgressBarSmeter;
    Label LabelSmeter;

    // AGC, squelch and record rows
    CheckBox CheckBoxAgc;
    Slider SliderAgcThreshold;
    Label LabelAgcThreshold;
    Slider SliderAgcDecay;
    Label LabelAgcDecay;
    Slider SliderSquelch;
    Label LabelSquelch;
    PopupMenu PopupMenuSquelchTime;
    TextField TextFieldSquelchedDeadSpace;
    Label Label8; // "Squelched dead"
    CheckBox CheckBoxHang;
    Slider SliderAgcSlope;
    Label LabelAgcSlope;
    Slider SliderAgcManualGain;
    Label LabelAgcManualGain;
    PushButton PushButtonRecord;
    Label LabelRecordingStatus;
    CheckBox CheckBoxNetwork;
    Label LabelStreaming;

    // Waterfall rows
    Label LabelStatus;
    Slider SliderWaterfallGain;
    Label LabelWaterfallGain;
    Slider SliderWaterfallMinDb;
    Label LabelWaterfallMinDb;
    CheckBox CheckBoxUpdateWaterfall;
    WaterfallClass WaterfallCanvas;

    // Never shown: what happened, for a debugger or a test
    TextArea TextArea1; // replies to the upgrade requests, dead times of recordings
    TextArea TextArea2;
    Listbox Listbox1; // the log, one row per event
    PushButton PushButtonClearListbox;

  private:
    struct Range {
        int low = 0;
        int high = 0;
    };

    // Each sets a control's name, place and first value, and adds the control to the console.
    void Make(Control& control, std::string name, Rect place, Locks locks = {});
    void Make(Label& label, std::string name, Rect place, std::string text);
    void Make(TextField& field, std::string name, Rect place, std::string text);
    void Make(CheckBox& box, std::string name, Rect place, std::string caption, Locks locks = {});
    void Make(PushButton& button, std::string name, Rect place, std::string caption);
    void Make(PopupMenu& popup, std::string name, Rect place,
              std::initializer_list<const char*> rows);
    void Make(Slider& slider, std::string name, Rect place, Range range, int value);

    void CreateTopRows();
    void CreateTuningRow();
    void CreateGainRows();
    void CreateWaterfallRows();
    void CreateHiddenControls();
    void NameForScreenReaders();
    void NameLongestTexts();

    std::vector<Control*> made;
};

} // namespace larkspool
