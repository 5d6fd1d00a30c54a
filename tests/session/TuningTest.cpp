#include "support/ConsoleFixture.h"

namespace larkspool {
namespace {

using Commands = std::vector<std::string>;

// What the operator does to the controls, and what the receiver hears of it.
class Tuning : public ConsoleFixture {
  protected:
    Tuning() { Start(); }

    // The last command that sets the mode and passband; none: "".
    std::string Modulation() {
        std::string last;
        for (const std::string& text : Audio().TakeCommands()) {
            if (text.rfind("SET mod=", 0) == 0) {
                last = text;
            }
        }
        return last;
    }
};

TEST_F(Tuning, EveryKeystrokeTunes) {
    ConnectAndStream();
    for (const char* text : {"7", "70", "705", "7055", "7055.", "7055.0", "7055.00"}) {
        Console().TextFieldFreq.SetText(text);
        EXPECT_EQ(Modulation(), std::string("SET mod=am low_cut=-5000 high_cut=5000 freq=") + text);
    }
    EXPECT_EQ(app->prefs.prefsLastFreq, 7055.0);
    Console().TextFieldFreq.SetText("none");
    EXPECT_EQ(app->prefs.prefsLastFreq, 0.0);
    EXPECT_EQ(Waterfall().TakeCommands().size(), 8U * 4) << "the waterfall follows each time";
}

TEST_F(Tuning, TheWheelStepsInKilohertzAndTensOfHertz) {
    ConnectAndStream();
    struct Case {
        TextField& field;
        const char* text;
        int steps;
        const char* after;
    };
    auto& c = Console();
    const Case cases[] = {{c.TextFieldFreq, "7074.5", 1, "7075.5"},
                          {c.TextFieldFreq, "1", -3, "-2"},
                          {c.TextFieldFreq, "x", 1, "1"},
                          {c.TextFieldFreq, "9.9", -20, "-10.1"},
                          {c.TextFieldLowCut, "-2700", -3, "-2730"},
                          {c.TextFieldHighCut, "", 5, "50"},
                          {c.TextFieldHighCut, "99.5", -10, "-0.5"}};
    for (const Case& one : cases) {
        one.field.SetText(one.text);
        app->prefsInvertScrollWheelPolarity = true; // the tuning fields don't ask
        one.field.Wheel(0, 120 * one.steps);
        EXPECT_EQ(one.field.Text(), one.after);
    }
    EXPECT_EQ(Modulation(), "SET mod=am low_cut=-2730 high_cut=0 freq=-10.1");
    for (Control* untouched :
         {static_cast<Control*>(&c.PopupMenuMode), static_cast<Control*>(&c.SliderSquelch)}) {
        EXPECT_FALSE(untouched->TakesWheel());
    }
}

TEST_F(Tuning, AgcSquelchAndEmphasisGoOutAtOnce) {
    ConnectAndStream();
    Console().CheckBoxAgc.SetValue(false);
    Console().CheckBoxHang.SetValue(true);
    Console().SliderAgcThreshold.SetValue(-99);
    Console().SliderAgcSlope.SetValue(3);
    Console().SliderAgcDecay.SetValue(4000);
    Console().SliderAgcManualGain.SetValue(80);
    EXPECT_EQ(Audio().TakeCommands(),
              (Commands{"SET agc=0 hang=0 thresh=-130 slope=6 decay=1000 manGain=50",
                        "SET agc=0 hang=1 thresh=-130 slope=6 decay=1000 manGain=50",
                        "SET agc=0 hang=1 thresh=-99 slope=6 decay=1000 manGain=50",
                        "SET agc=0 hang=1 thresh=-99 slope=3 decay=1000 manGain=50",
                        "SET agc=0 hang=1 thresh=-99 slope=3 decay=4000 manGain=50",
                        "SET agc=0 hang=1 thresh=-99 slope=3 decay=4000 manGain=80"}));
    EXPECT_EQ(Console().LabelAgcThreshold.Text(), "Threshold -99 dB");
    EXPECT_EQ(Console().LabelAgcManualGain.Text(), "Manual Gain 80 dB");
    Console().SliderSquelch.SetValue(12);
    Console().PopupMenuSquelchTime.Pick(1);
    Console().PopupMenuDeEmphasis.Pick(2);
    EXPECT_EQ(Audio().TakeCommands(),
              (Commands{"SET squelch=12 param=0", "SET squelch=12 param=0.2", "SET de_emp=2"}));
    EXPECT_EQ(Console().LabelSquelch.Text(), "Squelch 12 dB");
}

TEST_F(Tuning, NameAndPlaceAreHeardAtTheNextSession) {
    ConnectAndStream();
    Console().TextFieldIdentity.SetText("Ada");
    Console().TextFieldGeoLocation.SetText("Turin");
    EXPECT_TRUE(Audio().TakeCommands().empty());
    PressConnect();
    AcceptLinks();
    Upgrade();
    Audio().TakeRequest();
    Audio().Message(" audio_init=0");
    desktop.Advance(0);
    const Commands sent = Audio().TakeCommands();
    EXPECT_EQ(sent[sent.size() - 2], "SET ident_user=Ada");
    EXPECT_EQ(sent.back(), "SET geoloc=Turin");
}

TEST_F(Tuning, AModeBringsItsPassbandAndAgcInOneOrder) {
    ConnectAndStream();
    Console().SliderAgcDecay.SetValue(3000);
    Audio().TakeCommands();
    Console().PopupMenuMode.Pick(3);
    EXPECT_EQ(Audio().TakeCommands(),
              (Commands{"SET mod=usb low_cut=100 high_cut=5000 freq=10000",
                        "SET mod=usb low_cut=100 high_cut=2700 freq=10000",
                        "SET agc=1 hang=0 thresh=-130 slope=6 decay=1000 manGain=50",
                        "SET mod=usb low_cut=100 high_cut=2700 freq=10000"}));
    EXPECT_EQ(app->prefs.prefsLastMode, 3U);
    Console().PopupMenuMode.Pick(0);
    EXPECT_EQ(Console().LabelAgcDecay.Text(), "Decay 3000 ms");
}

TEST_F(Tuning, EachOfTheTwelveModesKeepsItsOwnSettings) {
    const auto edge = [](int mode) { return std::to_string(mode * 7 - 40); };
    ASSERT_EQ(Console().PopupMenuMode.ListCount(), 12);
    for (int mode = 0; mode < 12; ++mode) {
        Console().PopupMenuMode.Pick(mode);
        Console().TextFieldLowCut.SetText(edge(mode) + ".9");
        Console().SliderAgcManualGain.SetValue(mode * 10);
        Console().CheckBoxAgc.SetValue(mode % 2 == 0);
        EXPECT_EQ(Console().TextFieldLowCut.Text(), edge(mode) + ".9")
            << "the field keeps its text";
    }
    Restart();
    for (int mode = 11; mode >= 0; --mode) {
        Console().PopupMenuMode.Pick(mode);
        EXPECT_EQ(Console().TextFieldLowCut.Text(), edge(mode));
        EXPECT_EQ(Console().SliderAgcManualGain.Value(), mode * 10);
        EXPECT_EQ(Console().CheckBoxAgc.Value(), mode % 2 == 0);
    }
}

TEST_F(Tuning, AbsurdNumbersInTheFieldsDoNoHarm) {
    ConnectAndStream();
    Console().CheckBoxUpdateWaterfall.SetValue(true);
    for (const char* text : {"1e400", "-1e400", "9223372036854775808", "99999999999999999999999",
                             "nan", "inf", "\xff\xfe", "- 5", ""}) {
        Console().TextFieldFreq.SetText(text);
        Console().TextFieldLowCut.SetText(text);
        Console().TextFieldHighCut.SetText(text);
        Console().WaterfallCanvas.mouseDown(3, 3);
        Console().TextFieldFreq.Wheel(0, 120);
        Console().TextFieldLowCut.Wheel(0, -1200);
        Console().TextFieldPort.SetText(text);
        Console().TextFieldSquelchedDeadSpace.SetText(text);
        desktop.Advance(0.2);
    }
    Console().TextFieldLowCut.SetText("-100");
    Console().TextFieldHighCut.SetText("100");
    Console().TextFieldFreq.SetText("9420");
    EXPECT_EQ(Modulation(), "SET mod=am low_cut=-100 high_cut=100 freq=9420");
}

} // namespace
} // namespace larkspool
