// Any bytes as a file among the recordings, at the program's start: the repair leaves every file
// that isn't an unfinished recording as it was, and of one that is it writes the sizes alone.
#include "Input.h"
#include "audio/RecordingRepair.h"
#include "audio/WavFile.h"
#include "support/Files.h"
#include "support/VirtualDesktop.h"

#include <string>

namespace larkspool::fuzz {
namespace {

void CheckRepaired(const FolderItem& file, std::string_view before, std::string_view after) {
    Require(before.size() > WavHeaderSize + 1, "there was sound in the file");
    Require(before.substr(40, 4) == std::string(4, '\0'), "its header told of none");
    Require(before.substr(WavHeaderSize) == after.substr(WavHeaderSize), "the sound is untouched");
    Require(before.substr(0, 4) == after.substr(0, 4) &&
                before.substr(8, 32) == after.substr(8, 32),
            "the sizes alone have changed");
    const auto shape = LookAtWavFile(file);
    Require(shape.has_value(), "the header is one of ours");
    Require(shape->headerSamples == shape->wholeSamples, "the header tells what is there");
}

} // namespace
} // namespace larkspool::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    static VirtualDesktop desktop;
    static const FolderItem file =
        *desktop.Folder(SpecialFolder::Documents).Child("KiwiRecording-2027.WAV");
    const std::string before(reinterpret_cast<const char*>(data), size);
    Put(file, before);
    const auto repaired = [] {
        RecordingRepair repair(desktop);
        repair.Start();
        desktop.Advance(6);
        return ContentOf(file);
    };
    const std::string after = repaired();
    fuzz::Require(repaired() == after, "once is enough");
    if (after != before) {
        fuzz::Require(after.size() == before.size(), "the file keeps its length");
        fuzz::CheckRepaired(file, before, after);
    }
    return 0;
}
