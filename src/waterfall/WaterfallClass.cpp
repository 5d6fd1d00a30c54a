#include "waterfall/WaterfallClass.h"

#include <algorithm>

namespace larkspool {

namespace {

constexpr std::size_t ShortestFrame = 1000;
constexpr std::size_t FrameHeader = 13; // its content is not used
constexpr int Bottom = 55;              // the byte for the bottom of the range
constexpr int MarkStrip = 5;            // rows above the picture
constexpr int MarkHeight = 4;
constexpr double Center = WaterfallClass::Bins / 2.0;

} // namespace

void WaterfallClass::NewData(std::string_view frame) {
    if (frame.size() < ShortestFrame) {
        return;
    }
    if (!thePicture) {
        thePicture.emplace(Bounds().width, Bounds().height - MarkStrip);
    }
    const std::size_t bins = std::min(frame.size() - FrameHeader, newDataMB.size());
    for (std::size_t i = 0; i < bins; ++i) {
        // Wraps around: a byte below the bottom becomes the top of the scale.
        const int bin = static_cast<std::uint8_t>(frame[i + FrameHeader]);
        newDataMB[i] = static_cast<std::uint8_t>(bin - Bottom);
    }
    thePicture->ScrollDown(1);
    const auto row = thePicture->Row(0);
    const std::size_t width = std::min<std::size_t>(row.size(), Bins);
    for (std::size_t x = 0; x < width; ++x) {
        row[x] = levelColors[newDataMB[x]];
    }
    InvalidateRow();
}

void WaterfallClass::SetLevels(double gain, int offset) {
    levelColors.Update(colorTable, gain, offset);
}

void WaterfallClass::SetPassband(double lowEdge, double highEdge) {
    if (low != lowEdge || high != highEdge) {
        low = lowEdge;
        high = highEdge;
        Invalidate();
    }
}

void WaterfallClass::SetUpdating(bool value) {
    updating = value;
    Invalidate();
}

void WaterfallClass::DropPicture() {
    thePicture.reset();
    Invalidate();
}

void WaterfallClass::Event_Paint(Graphics& g) {
    if (!updating) {
        g.Clear(0, 0, g.Width(), g.Height());
        return;
    }
    if (!thePicture) {
        g.SetForeColor({0, 0, 0});
        g.FillRect(0, 0, g.Width(), g.Height());
        return;
    }
    g.Clear(0, 0, g.Width(), MarkStrip);
    if (g.Width() == Bins) {
        g.DrawPicture(*thePicture, 0, MarkStrip);
        // A picture from a time when the canvas was narrower does not fill it now.
        if (const int width = thePicture->Width(); width < Bins) {
            g.Clear(width, MarkStrip, Bins - width, g.Height() - MarkStrip);
        }
    } else {
        g.DrawPicture(*thePicture, 0, MarkStrip, g.Width(), g.Height() - MarkStrip);
    }
    PaintMarks(g);
}

void WaterfallClass::PaintMarks(Graphics& g) const {
    const double width = g.Width();
    const double scale = width / Bins;
    const auto x = [scale, width](double hertz) {
        return std::clamp(scale * (Center + hertz * Center / (1000 * HalfSpan)), -width, 2 * width);
    };
    g.SetForeColor({255, 255, 0});
    g.FillRect(x(low), 0, x(high) - x(low), MarkHeight);
    g.SetForeColor({255, 0, 0});
    g.FillRect((Center - 2) * scale, 0, MarkHeight, MarkHeight);
}

} // namespace larkspool
