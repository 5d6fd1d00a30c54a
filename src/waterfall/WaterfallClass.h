#pragma once

#include "platform/Canvas.h"
#include "platform/Picture.h"
#include "waterfall/ColorTable.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace larkspool {

// What the slider of the waterfall's minimum stands for: the black point in steps above the bottom
// of the range, 0 to 63, and the same in dB.
constexpr int WaterfallOffset(int sliderValue) { return 200 - sliderValue; }
constexpr int WaterfallMinimum(int offset) { return offset - 120; }

// The canvas under the controls: the newest row at the top, older ones moving down, and above them
// the marks of passband and carrier. A control of the console.
class WaterfallClass : public Canvas {
  public:
    static constexpr int Bins = 1024;         // in a row; the canvas's full width
    static constexpr double HalfSpan = 7.328; // kHz from the centre to an edge

    WaterfallClass() { coversItself = true; }

    // Adds one row. frame: the message behind its tag, header included; a short one adds nothing,
    // and where bins are missing at the end the last row's stay.
    void NewData(std::string_view frame);

    // For rows to come; those already drawn keep their colours.
    void SetLevels(double gain, int offset);
    void SetPassband(double lowEdge, double highEdge); // Hz relative to the tuned frequency
    void SetUpdating(bool value);                      // while it isn't, nothing is drawn

    // The next row starts a new picture, of the canvas's size then.
    void DropPicture();

    void Event_Paint(Graphics& g) override;

  private:
    void PaintMarks(Graphics& g) const;

    ColorTable colorTable;
    LevelColors levelColors;
    std::array<std::uint8_t, 2000> newDataMB{}; // the row's bins, converted
    std::optional<Picture> thePicture;
    double low = 0;  // Hz
    double high = 0; // Hz
    bool updating = false;
};

} // namespace larkspool
