#pragma once

#include "platform/Canvas.h"
#include "platform/Picture.h"
#include "waterfall/ColorTable.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace larkspool {

// The meaning of the slider for the waterfall's minimum: the black point in steps above the bottom
// of the range, 0 to 63, and the same level in dB.
constexpr int WaterfallOffset(int sliderValue) { return 200 - sliderValue; }
constexpr int WaterfallMinimum(int offset) { return offset - 120; }

// The canvas below the controls: the newest row is at the top, older rows move down, and above them
// are the marks of passband and carrier. A control of the console.
class WaterfallClass : public Canvas {
  public:
    static constexpr int Bins = 1024;         // per row; the canvas's full width
    static constexpr double HalfSpan = 7.328; // kHz from the center to an edge

    WaterfallClass() { coversItself = true; }

    // Adds one row. frame: the message after its tag, with its header. A frame below 1000 bytes
    // adds nothing; bins that are missing at the end keep the values of the last row.
    void NewData(std::string_view frame);

    // Applies to new rows; rows that are already drawn keep their colors.
    void SetLevels(double gain, int offset);
    void SetPassband(double lowEdge, double highEdge); // Hz relative to the tuned frequency
    void SetUpdating(bool value);                      // false: nothing is drawn

    // The next row starts a new picture, which has the canvas's size at that time.
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
