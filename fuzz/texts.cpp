// The small ways in: files, pages, replies and lines of text, each a target of its own.
#include "Input.h"
#include "audio/RecordingRepair.h"
#include "audio/WavFile.h"
#include "directory/DirectoryScanner.h"
#include "directory/FavoritesFile.h"
#include "directory/PastedUrl.h"
#include "platform/Text.h"
#include "remote/RigLines.h"
#include "remote/RigMode.h"
#include "remote/RigReply.h"
#include "schedule/ClockComparison.h"
#include "schedule/RunningEntry.h"
#include "schedule/ScheduleFile.h"
#include "schedule/ScheduleTexts.h"
#include "shell/VersionCheck.h"
#include "support/Files.h"
#include "support/VirtualDesktop.h"

#include <cmath>
#include <variant>

namespace larkspool::fuzz {
namespace {

constexpr double Noon = 3'882'945'600; // 2027-01-16 12:00:00

void CheckStationLine(std::string_view line) {
    const auto read = ParseStationLine(line, Date::FromTotalSeconds(Noon));
    const auto* station = std::get_if<StationLine>(&read);
    if (station == nullptr) {
        Require(std::get<std::string>(read).ends_with("in the clipboard"), "the user is told why");
        return;
    }
    Require(Contains(line, station->freq), "the frequency stands in the line");
    const auto span = SplitTimeCell(station->time);
    Require(span && station->time.size() == 17, "the schedule can read the time");
    for (const auto& time : {span->start, span->end}) { // noon lies before it or after it
        Require(DateTimeCompare(Noon, "", "00:00:00", time, false) >= 0,
                "the row can be compared with the clock");
    }
}

void CheckRigNumber(const RigCommand& command) {
    const RigVerb verb = command.verb;
    const bool needsNumber = verb == RigVerb::SetFrequency || verb == RigVerb::SetLevel ||
                             verb == RigVerb::SetFunction || verb == RigVerb::SetSplit;
    Require(command.number || !needsNumber, "what is set has a number");
    Require(std::isfinite(command.number.value_or(0)), "a number is finite");
    const auto row = RigModeRow(command.word);
    if (verb == RigVerb::SetMode && row) {
        const RigPassband edges = RigEdges(*row, {-2700, -100}, command.number.value_or(0));
        Require(std::isfinite(edges.low) && std::isfinite(edges.high), "an edge is a number");
        Require(!RigModeName(*row).empty(), "a mode has a name");
    }
}

void CheckRigLine(std::string_view line) {
    Require(line.size() <= RigLines::Longest, "a line is short");
    while (!line.empty()) {
        const std::size_t before = line.size();
        const auto command = TakeRigCommand(line);
        Require(line.size() < before, "a command takes something");
        if (!command) {
            return;
        }
        CheckRigNumber(*command);
        const std::string answer = RigReplyText(*command, ReplyWithoutConsole(*command));
        Require(answer.size() < 2000 && answer.ends_with('\n'), "an answer is a line or some");
    }
}

void CheckRepaired(const FolderItem& file, std::string_view before, std::string_view after) {
    Require(before.size() > WavHeaderSize + 1, "there was sound in the file");
    Require(before.substr(40, 4) == std::string(4, '\0'), "its header told of none");
    Require(before.substr(WavHeaderSize) == after.substr(WavHeaderSize), "the sound is untouched");
    Require(before.substr(0, 4) == after.substr(0, 4) &&
                before.substr(8, 32) == after.substr(8, 32),
            "the sizes alone have changed");
    const auto shape = LookAtWavFile(file);
    Require(shape && shape->headerSamples == shape->wholeSamples, "the header tells what is there");
}

} // namespace

// A station list's line for a new schedule row, and a web address for the address field. What is
// taken out of either can be used.
void ClipboardLine(std::string_view text) {
    CheckStationLine(text);
    if (const auto pasted = ParsePastedUrl(text)) {
        Require(!Contains(pasted->host, ":"), "a host has no port in it");
        Require(pasted->host.size() <= text.size(), "a host is part of what was pasted");
        Require(Str(Val(pasted->port)) == pasted->port, "a port is a number");
        Require(!ParsePastedUrl(pasted->host), "the address field doesn't take it apart again");
    }
}

// The public directory's page.
void DirectoryPage(std::string_view page) {
    ReceiverList whole;
    DirectoryScanner(whole).ScanPage(page);
    ReceiverList lineByLine;
    DirectoryScanner scanner(lineByLine);
    for (std::size_t at = 0; at <= page.size();) {
        const std::size_t end = std::min(page.find('\n', at), page.size());
        scanner.ProcessLine(page.substr(at, end - at));
        at = end + 1;
    }
    Require(whole == lineByLine, "one go finds what line after line finds");
}

void FavoritesFile(std::string_view text) {
    const auto decode = [](std::string_view file) {
        auto stream = TextInputStream::FromText(std::string(file));
        return DecodeFavorites(stream);
    };
    const auto lines = decode(text);
    const auto& list = lines.receivers;
    Require(list.names.size() == list.urls.size() && list.names.size() == list.ports.size(),
            "a receiver has a name, a host and a port");
    for (const std::string& name : list.names) {
        Require(name.find_first_of(";\r\n") == std::string::npos,
                "a name is one field of one line");
    }
    const std::string written = EncodeFavorites(lines.Rows(), lines.others);
    const auto again = decode(written);
    Require(written.starts_with("\xEF\xBB\xBF") ||
                (again.receivers == list && again.others == lines.others),
            "what is written is read the same");
}

// A file among the recordings at the program's start: the repair leaves every file that isn't
// an unfinished recording as it was, and of one that is it writes the sizes alone.
void RecordingFile(std::string_view before) {
    static VirtualDesktop desktop;
    static const FolderItem file =
        *desktop.Folder(SpecialFolder::Documents).Child("KiwiRecording-2027.WAV");
    Put(file, before);
    const auto repaired = [] {
        RecordingRepair repair(desktop);
        repair.Start();
        desktop.Advance(6);
        return ContentOf(file);
    };
    const std::string after = repaired();
    Require(after.size() == before.size(), "the file keeps its length");
    Require(repaired() == after, "once is enough");
    if (after != before) {
        CheckRepaired(file, before, after);
    }
}

// What a peer of rig control sends, in pieces of the size that the first byte gives.
void RigLinesInPieces(std::string_view bytes) {
    Input input(bytes);
    const std::size_t piece = std::size_t{input.Byte()} + 1;
    RigLines lines;
    while (!input.Empty() && !lines.IsTooLong()) {
        if (const auto line = lines.Take()) {
            CheckRigLine(*line);
        } else {
            Require(lines.Room() > 0, "there is room for more");
            lines.Add(input.Piece(std::min(piece, lines.Room())));
        }
    }
    while (const auto line = lines.Take()) {
        CheckRigLine(*line);
    }
}

void ScheduleFile(std::string_view text) {
    const auto read = [](std::string_view content) {
        auto file = TextInputStream::FromText(std::string(content));
        return ReadSchedule(file);
    };
    const auto rows = read(text);
    Require(read(ScheduleText(rows)) == rows, "what is written is read the same");
    for (const ScheduleRow& row : rows) {
        if (const auto span = SplitTimeCell(row[2])) {
            DateTimeCompare(Noon, row[1], span->start, span->end, false);
            DateTimeCompare(Noon, row[1], span->start, span->end, true);
            RunningEntry entry;
            entry.Begin(Noon, row[2]);
            const bool hasEnded = entry.Compare(Noon + 86401, row[2], 0) == 1;
            Require(hasEnded == SecondOfDay(span->end).has_value(),
                    "an end that can be read comes within a day");
        }
    }
}

// The version server's: skipping its offer makes a question that fits its fields.
void VersionReply(std::string_view content) {
    const auto newer = ReadUpdateReply(content);
    const bool isLatest = content == "LATEST" || content.starts_with("LATEST ");
    Require(newer.has_value() != isLatest, "only the word says that nothing is newer");
    if (newer) {
        Require(newer->text.size() <= 100, "the offer is short");
        Require(content.starts_with(newer->text), "the offer is what the server wrote");
        const UpdateQuestion next = MakeUpdateQuestion(1, "130", newer->digits, {12, 5});
        Require(next.version.size() == 3, "the next question has three digits");
        Require(UpdateAddress("h", next) ==
                    "http://h/version/versionb.html?p=0001" + next.version + "M1205",
                "the next question has its form");
    }
}

} // namespace larkspool::fuzz
