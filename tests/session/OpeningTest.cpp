#include "support/ConsoleFixture.h"
#include "support/Files.h"

#include <filesystem>
#include <map>

namespace larkspool {
namespace {

// The console's first moments, and what it remembers from the last time.
class Opening : public ConsoleFixture {
  protected:
    Opening() { Start(); }

    FolderItem Stored(SpecialFolder folder = SpecialFolder::Preferences) {
        return *desktop.Folder(folder).Child("Larkspool Prefs");
    }
    std::string Address() { return Console().TextFieldAddress.Text(); }

    // Whatever the user can set, as it shows.
    std::map<std::string, std::string> Settings() {
        std::map<std::string, std::string> settings;
        for (const Control* control : Console().Controls()) {
            if (const auto* field = dynamic_cast<const TextField*>(control)) {
                settings[control->Name()] = field->Text();
            } else if (const auto* popup = dynamic_cast<const PopupMenu*>(control)) {
                settings[control->Name()] = popup->Text();
            } else if (const auto* box = dynamic_cast<const CheckBox*>(control)) {
                settings[control->Name()] = box->Value() ? "on" : "off";
            } else if (const auto* slider = dynamic_cast<const Slider*>(control)) {
                settings[control->Name()] = std::to_string(slider->Value());
            }
        }
        return settings;
    }
};

TEST_F(Opening, AFirstStartShowsTheDefaultsAndNoControlCoversAnother) {
    EXPECT_TRUE(Console().Visible());
    EXPECT_EQ(Console().Height(), 370);
    EXPECT_EQ(Console().TextFieldPort.Text(), "8073");
    EXPECT_FALSE(Console().PushButtonRecord.Enabled());
    EXPECT_FALSE(Console().TextArea1.Visible());
    EXPECT_FALSE(Console().Listbox1.Visible());
    EXPECT_TRUE(desktop.boxes.empty());
    Console().Resize(2000, 370);
    EXPECT_EQ(Console().WaterfallCanvas.Bounds().width, 1024) << "as many points as a row has bins";
    for (const Control* one : Console().Controls()) {
        for (const Control* other : Console().Controls()) {
            const bool canHide = one < other && one->Visible() && other->Visible() &&
                                 dynamic_cast<const Label*>(one) == nullptr &&
                                 dynamic_cast<const Label*>(other) == nullptr;
            const Rect a = one->Bounds();
            const Rect b = other->Bounds();
            EXPECT_FALSE(canHide && a.left < b.left + b.width && b.left < a.left + a.width &&
                         a.top < b.top + b.height && b.top < a.top + a.height)
                << one->Name() << " and " << other->Name();
        }
    }
}

TEST_F(Opening, NoLabelStaysUntitledWhateverWasStored) {
    app->prefs.prefsLastMode = 12; // outside the list, which then opens with its first
    app->prefs.prefsSquelch = 21;  // each slider's own first value
    app->prefs.prefsWaterfallGain = 222;
    app->prefs.prefsWaterfallOffset = 200;
    app->prefs.prefsModeSettings.threshold[0] = -77;
    app->prefs.prefsModeSettings.slope[0] = 0;
    app->prefs.prefsModeSettings.decay[0] = 0;
    app->prefs.prefsModeSettings.manualGain[0] = 0;
    Restart();
    for (const Control* control : Console().Controls()) {
        if (const auto* label = dynamic_cast<const Label*>(control)) {
            EXPECT_NE(label->Text(), "Untitled") << label->Name();
        }
    }
    EXPECT_EQ(Console().PopupMenuMode.Text() + Console().TextFieldHighCut.Text(), "am5000");
    EXPECT_EQ(Console().LabelSquelch.Text(), "Squelch 21 dB");
    app->prefs.prefsLastMode = 4'000'000'000U;
    app->prefs.prefsSquelch = 99;
    Restart();
    EXPECT_EQ(Console().PopupMenuMode.Text() + Console().TextFieldHighCut.Text(), "am5000");
    EXPECT_EQ(Console().LabelSquelch.Text(), "Squelch 40 dB");
}

TEST_F(Opening, EveryControlComesBackAsItWasLeft) {
    Console().TextFieldAddress.SetText("http://192.0.2.10:8075/"); // pasted
    EXPECT_EQ(Console().TextFieldPort.Text(), "8075");
    Console().PopupMenuMode.Pick(3);
    Console().TextFieldFreq.SetText("14074.5");
    Console().TextFieldLowCut.SetText("200");
    Console().SliderAgcDecay.SetValue(2500);
    Console().CheckBoxHang.SetValue(true);
    Console().OutputVolumeSlider.SetValue(640);
    Console().SoundOutputPopupMenu.Pick(1);
    Console().TextFieldIdentity.SetText("S\xc3\xb8ren");
    Console().TextFieldGeoLocation.SetText("Bergen");
    Console().SliderWaterfallGain.SetValue(312);
    Console().SliderWaterfallMinDb.SetValue(150);
    Console().SliderSquelch.SetValue(7);
    Console().PopupMenuSquelchTime.Pick(2);
    Console().CheckBoxReconnect.SetValue(true);
    Console().CheckBoxUpdateWaterfall.SetValue(true);
    Console().TextFieldSquelchedDeadSpace.SetText("0.25");
    auto left = Settings();
    Restart();
    left["TextFieldSquelchedDeadSpace"] = ".3"; // shown with one digit
    EXPECT_EQ(Settings(), left);
    EXPECT_EQ(Address(), "192.0.2.10");
    EXPECT_EQ(Console().LabelAgcDecay.Text(), "Decay 2500 ms");
    EXPECT_EQ(Console().LabelWaterfallGain.Text(), "Waterfall Gain: 3.12");
    EXPECT_EQ(Console().LabelWaterfallMinDb.Text(), "Waterfall min -70 db");
    EXPECT_EQ(app->prefs.prefsSquelchedDeadSpace, 0.25) << "what is stored isn't rounded";
}

TEST_F(Opening, RestoringChangesNothingThatIsStored) {
    auto& modes = app->prefs.prefsModeSettings;
    modes.slope[0] = 6.7;       // a slider has no room for the fraction
    modes.manualGain[0] = 9999; // nor for this
    modes.lowCut[15] = 1234;    // and no control reaches this one
    app->prefs.prefsLastMode = 2;
    app->prefs.prefsLastFreq = 7055.123456789012;
    Quit();
    const std::string before = ContentOf(Stored());
    ASSERT_FALSE(before.empty());
    Start();
    desktop.Advance(5);
    Quit();
    EXPECT_EQ(ContentOf(Stored()), before);
}

TEST_F(Opening, AFileBesideTheProgramTakesOverAndShiftWithControlClearsTheSettings) {
    Console().TextFieldAddress.SetText("in.preferences");
    Quit();
    const std::filesystem::path beside = Stored(SpecialFolder::Program).Path();
    std::filesystem::copy(Stored().Path(), beside);
    Start();
    Console().TextFieldAddress.SetText("beside.program");
    Restart();
    EXPECT_EQ(Address(), "beside.program");
    Quit();
    std::filesystem::remove(beside);
    desktop.shiftKey = true; // alone it does nothing
    Start();
    EXPECT_EQ(Address(), "in.preferences");
    Quit();
    desktop.controlKey = true;
    Start();
    EXPECT_EQ(desktop.boxes, Strings{"Settings cleared"});
    EXPECT_EQ(Address(), "");
    EXPECT_EQ(Console().TextFieldPort.Text(), "8073");
    EXPECT_FALSE(Stored().Exists());
}

// A folder in the file's place can't be opened; this file of the kernel's opens, and reading fails.
TEST_F(Opening, SettingsThatCantBeReadAreToldOnceAndNeverReplaced) {
    const std::filesystem::path place = Stored().Path();
    Quit();
    std::filesystem::remove(place);
    std::filesystem::create_directory(place);
    for (const bool opens : {false, true}) {
        SCOPED_TRACE(opens);
        if (opens) {
            std::filesystem::remove(place);
            std::filesystem::create_symlink("/sys/class/net/lo/duplex", place);
        }
        desktop.boxes.clear();
        Start();
        desktop.Advance(0);
        ASSERT_EQ(desktop.boxes.size(), 1U);
        EXPECT_NE(desktop.boxes[0].find(place.string()), std::string::npos);
        EXPECT_EQ(Console().TextFieldPort.Text(), "8073");
        Console().TextFieldAddress.SetText("192.0.2.10");
        Quit();
        EXPECT_EQ(desktop.boxes.size(), 1U);
        EXPECT_TRUE(desktop.dialogs.empty()) << "told once";
        EXPECT_EQ(std::filesystem::is_directory(place), !opens);
        EXPECT_EQ(std::filesystem::is_symlink(place), opens);
    }
}

} // namespace
} // namespace larkspool
