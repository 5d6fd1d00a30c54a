#include "audio/RecordingRepair.h"

#include "audio/RecordingTexts.h"
#include "audio/WavFile.h"

#include <system_error>

namespace larkspool {

namespace {

constexpr int StartDelay = 5000; // ms, so that the disk is not busy while the program starts
constexpr int StepPeriod = 10;   // ms
constexpr int EntriesPerStep = 16;

bool IsUnfinished(const WavFileShape& shape) {
    return shape.headerSamples == 0 && shape.wholeSamples > 0;
}

} // namespace

RecordingRepair::RecordingRepair(Desktop& theDesktop)
    : desktop(theDesktop), timer(theDesktop.MakeTimer()) {
    timer->action = [this] { Step(); };
}

void RecordingRepair::Start() {
    timer->SetPeriod(StartDelay);
    timer->SetMode(Timer::Mode::Single);
}

// A folder may hold too many files to examine between two frames of sound.
void RecordingRepair::Step() {
    std::error_code failure;
    if (!hasBegun) {
        hasBegun = true;
        const FolderItem folder = desktop.Folder(SpecialFolder::Documents);
        next = std::filesystem::directory_iterator(folder.Path(), failure);
        timer->SetPeriod(StepPeriod);
        timer->SetMode(Timer::Mode::Multiple);
    }
    for (int i = 0; i < EntriesPerStep && next != std::filesystem::directory_iterator(); ++i) {
        LookAt(*next);
        next.increment(failure); // a failure sets it to the end
    }
    if (next == std::filesystem::directory_iterator()) {
        timer->SetMode(Timer::Mode::Off);
    }
}

void RecordingRepair::LookAt(const std::filesystem::directory_entry& entry) {
    const FolderItem file(entry.path());
    if (!IsRecordingName(file.Name())) {
        return;
    }
    // First without the lock: a recording that is just being created must not fail because this
    // holds the lock.
    const auto before = LookAtWavFile(file);
    if (!before || !IsUnfinished(*before)) {
        return;
    }
    const auto lock = desktop.Lock(file);
    if (lock == nullptr) {
        return; // this recording is still running
    }
    const auto shape = LookAtWavFile(file); // it may be complete by now
    if (shape && IsUnfinished(*shape)) {
        PatchWavSizes(file, *shape);
    }
}

} // namespace larkspool
