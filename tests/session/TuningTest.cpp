#include "support/ConsoleFixture.h"

namespace larkspool {
namespace {

// What the operator does to the controls, and what the receiver hears of it.
class Tuning : public ConsoleFixture {
  protected:
    Tuning() {
        Start();
        ConnectAndStream();
    }

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
    for (const char* text : {"7", "70", "705", "7055", "7055.", "7055.0", "7055.00"}) {
        Console().TextFieldFreq.SetText(text);
        EXPECT_EQ(Modulation(), std::string("SET mod=am low_cut=-5000 high_cut=5000 freq=") + text);
    }
    EXPECT_EQ(app->prefs.prefsLastFreq, 7055.0);
    const Strings sent = Waterfall().TakeCommands();
    EXPECT_EQ(sent.size(), 7U * 4) << "the waterfall follows each time";
    EXPECT_EQ(sent[1] + sent[5], "SET zoom=11 start=-183SET zoom=11 start=35049");
}

TEST_F(Tuning, TheWheelAndTheKeysStepAndReturnConnectsWhereAReceiverIsTyped) {
    app->prefsInvertScrollWheelPolarity = true; // the tuning fields don't ask
    auto& c = Console();
    struct Case {
        TextField* field;
        const char* text;
        int notches;
        double keySteps;
        const char* stepped;
    };
    for (const auto& [field, text, notches, keySteps, stepped] : {
             Case{&c.TextFieldFreq, "x", 1, 0, "1"},
             Case{&c.TextFieldFreq, "9.9", -20, 0, "-10.1"},
             Case{&c.TextFieldLowCut, "-2700", -3, 0, "-2730"},
             Case{&c.TextFieldHighCut, "99.5", -10, 0, "-0.5"},
             Case{&c.TextFieldFreq, "7074.9", 0, 0.1, "7075"},
             Case{&c.TextFieldFreq, "7074", 0, -10, "7064"},
             Case{&c.TextFieldLowCut, "-2700", 0, -1, "-2710"},
             Case{&c.TextFieldHighCut, "2700", 0, 10, "2800"},
             Case{&c.TextFieldAddress, "sdr.example.net", 0, 1, "sdr.example.net"},
         }) {
        field->SetText(text);
        field->Wheel(0, 120 * notches);
        field->Step(keySteps);
        EXPECT_EQ(field->Text(), stepped) << text;
    }
    EXPECT_EQ(Modulation(), "SET mod=am low_cut=-2710 high_cut=2800 freq=7064");
    EXPECT_FALSE(c.PopupMenuMode.TakesWheel() || c.SliderSquelch.TakesWheel());
    const int connects = Audio().socket.connects;
    for (const TextField* field : {&c.TextFieldAddress, &c.TextFieldPort, &c.TextFieldFreq}) {
        field->PressReturn();
        desktop.Advance(2);
    }
    EXPECT_EQ(Audio().socket.connects, connects + 2);
}

TEST_F(Tuning, AgcSquelchAndEmphasisGoOutAtOnce) {
    Console().CheckBoxAgc.SetValue(false);
    Console().CheckBoxHang.SetValue(true);
    EXPECT_EQ(Audio().TakeCommands(),
              (Strings{"SET agc=0 hang=0 thresh=-130 slope=6 decay=1000 manGain=50",
                       "SET agc=0 hang=1 thresh=-130 slope=6 decay=1000 manGain=50"}));
    Console().SliderAgcThreshold.SetValue(-99);
    Console().SliderAgcSlope.SetValue(3);
    Console().SliderAgcDecay.SetValue(4000);
    Console().SliderAgcManualGain.SetValue(80);
    const Strings sent = Audio().TakeCommands();
    ASSERT_EQ(sent.size(), 4U);
    EXPECT_EQ(sent[0], "SET agc=0 hang=1 thresh=-99 slope=6 decay=1000 manGain=50");
    EXPECT_EQ(sent[3], "SET agc=0 hang=1 thresh=-99 slope=3 decay=4000 manGain=80");
    EXPECT_EQ(Console().LabelAgcThreshold.Text(), "Threshold -99 dB");
    EXPECT_EQ(Console().LabelAgcManualGain.Text(), "Manual Gain 80 dB");
    Console().SliderSquelch.SetValue(12);
    Console().PopupMenuSquelchTime.Pick(1);
    Console().PopupMenuDeEmphasis.Pick(2);
    EXPECT_EQ(Audio().TakeCommands(),
              (Strings{"SET squelch=12 param=0", "SET squelch=12 param=0.2", "SET de_emp=2"}));
    EXPECT_EQ(Console().LabelSquelch.Text(), "Squelch 12 dB");
}

TEST_F(Tuning, AModeBringsItsPassbandAndAgcInOneOrder) {
    Console().SliderAgcDecay.SetValue(3000);
    Audio().TakeCommands();
    Console().PopupMenuMode.Pick(3);
    EXPECT_EQ(Audio().TakeCommands(),
              (Strings{"SET mod=usb low_cut=100 high_cut=5000 freq=10000",
                       "SET mod=usb low_cut=100 high_cut=2700 freq=10000",
                       "SET agc=1 hang=0 thresh=-130 slope=6 decay=1000 manGain=50",
                       "SET mod=usb low_cut=100 high_cut=2700 freq=10000"}));
    EXPECT_EQ(app->prefs.prefsLastMode, 3U);
    Console().PopupMenuMode.Pick(0);
    EXPECT_EQ(Console().LabelAgcDecay.Text(), "Decay 3000 ms");
}

TEST_F(Tuning, EachOfTheTwelveModesKeepsItsOwnSettings) {
    const char* const passbands[] = {"am -5000 5000",   "amn -2500 2500", "lsb -2700 -100",
                                     "usb 100 2700",    "cw 300 700",     "cwn 470 530",
                                     "nbfm -6000 6000", "lsn -2400 -100", "usn 100 2400",
                                     "sam -4900 4900",  "sal -4900 0",    "sau 0 4900"};
    const auto edge = [](int mode) { return std::to_string(mode * 7 - 40); };
    for (int mode = 0; mode < 12; ++mode) {
        Console().PopupMenuMode.Pick(mode);
        EXPECT_EQ(Console().PopupMenuMode.Text() + " " + Console().TextFieldLowCut.Text() + " " +
                      Console().TextFieldHighCut.Text(),
                  passbands[mode]);
        Console().TextFieldLowCut.SetText(edge(mode) + ".9");
        Console().TextFieldHighCut.SetText(edge(mode + 50));
        Console().SliderAgcManualGain.SetValue(mode * 10);
        Console().CheckBoxAgc.SetValue(mode % 2 == 0);
        EXPECT_EQ(Console().TextFieldLowCut.Text(), edge(mode) + ".9") << "as it was typed";
    }
    Restart();
    for (int mode = 11; mode >= 0; --mode) {
        SCOPED_TRACE(mode);
        Console().PopupMenuMode.Pick(mode);
        EXPECT_EQ(Console().TextFieldLowCut.Text(), edge(mode));
        EXPECT_EQ(Console().TextFieldHighCut.Text(), edge(mode + 50));
        EXPECT_EQ(Console().SliderAgcManualGain.Value(), mode * 10);
        EXPECT_EQ(Console().CheckBoxAgc.Value(), mode % 2 == 0);
    }
}

} // namespace
} // namespace larkspool
