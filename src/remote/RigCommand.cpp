#include "remote/RigCommand.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>

namespace larkspool {

namespace {

constexpr std::string_view Blanks = " \t";
constexpr std::size_t LongestNumber = 40; // characters

// Arguments: "n" is a number, "w" a word, "N" and "W" the same but optional, "*" the rest of the
// line, ">" another command.
struct Word {
    char letter; // the short form; 0: none
    std::string_view name;
    RigVerb verb;
    std::string_view arguments = {};
};

constexpr std::array Words = {
    Word{'f', "get_freq", RigVerb::GetFrequency},
    Word{'F', "set_freq", RigVerb::SetFrequency, "n"},
    Word{'m', "get_mode", RigVerb::GetMode},
    Word{'M', "set_mode", RigVerb::SetMode, "wN"},
    Word{'v', "get_vfo", RigVerb::GetVfo},
    Word{'V', "set_vfo", RigVerb::SetVfo, "w"},
    Word{'s', "get_split_vfo", RigVerb::GetSplit},
    Word{'S', "set_split_vfo", RigVerb::SetSplit, "nW"},
    Word{'l', "get_level", RigVerb::GetLevel, "w"},
    Word{'L', "set_level", RigVerb::SetLevel, "wn"},
    Word{'u', "get_func", RigVerb::GetFunction, "w"},
    Word{'U', "set_func", RigVerb::SetFunction, "wn"},
    Word{'t', "get_ptt", RigVerb::NotAvailable},
    Word{'T', "set_ptt", RigVerb::NotAvailable, "w"},
    Word{'b', "send_morse", RigVerb::NotAvailable, "*"},
    Word{'w', "send_cmd", RigVerb::Unreadable, ">"}, // for the radio behind the server
    Word{'_', "get_info", RigVerb::GetInfo},
    Word{'q', "quit", RigVerb::Quit},
    Word{'Q', "quit", RigVerb::Quit},
    Word{'\0', "get_powerstat", RigVerb::GetPowerState},
    Word{'\0', "get_lock_mode", RigVerb::GetLockMode},
    Word{'\0', "dump_state", RigVerb::DumpState},
    Word{'\0', "chk_vfo", RigVerb::CheckVfo},
    Word{'\0', "get_rig_info", RigVerb::GetRigInfo},
};

// Satellite trackers send these when a satellite rises and sets. They have no short form.
constexpr Word Rises = {'\0', "AOS", RigVerb::StartRecording};
constexpr Word Sets = {'\0', "LOS", RigVerb::StopRecording};

bool IsLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

void SkipBlanks(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(Blanks), line.size()));
}

std::string_view TakeToken(std::string_view& line) {
    SkipBlanks(line);
    const std::string_view token = line.substr(0, line.find_first_of(Blanks));
    line.remove_prefix(token.size());
    return token;
}

// The leading character that requests an extended answer.
char TakeSeparator(std::string_view& line) {
    constexpr std::string_view Signs = "+;|,";
    if (line.empty() || Signs.find(line.front()) == std::string_view::npos) {
        return '\0';
    }
    const char sign = line.front();
    line.remove_prefix(1);
    return sign == '+' ? '\n' : sign;
}

// Removes the command's word from the line; null, without removing anything, if the word is
// unknown. A short form needs no blank after it, as in "F7055000".
const Word* TakeWord(std::string_view& line) {
    std::string_view rest = line;
    const std::string_view token = TakeToken(rest);
    const bool isLong = token.starts_with('\\');
    for (const Word* word : {&Rises, &Sets}) {
        if (token == word->name) {
            line = rest;
            return word;
        }
    }
    for (const Word& word : Words) {
        if (isLong && token.substr(1) == word.name) {
            line = rest;
            return &word;
        }
        if (word.letter != '\0' && token.starts_with(word.letter)) {
            line.remove_prefix(1);
            return &word;
        }
    }
    return nullptr;
}

// A sign, digits, optionally a point and digits. Text that only begins with a number is not one.
std::optional<double> WholeNumber(std::string_view token) {
    const std::string_view digits = token.substr(token.starts_with('-') || token.starts_with('+'));
    const bool fits = token.size() <= LongestNumber && std::ranges::count(digits, '.') <= 1 &&
                      digits.find_first_of("0123456789") != std::string_view::npos &&
                      digits.find_first_not_of(".0123456789") == std::string_view::npos;
    return fits ? std::optional(Val(token)) : std::nullopt;
}

// False: an argument is missing or can't be read.
bool TakeArguments(RigCommand& command, std::string_view wanted, std::string_view& line) {
    for (const char kind : wanted) {
        const std::string_view token = TakeToken(line);
        if (token.empty()) {
            return kind == 'N' || kind == 'W';
        }
        command.arguments += (command.arguments.empty() ? "" : " ") + std::string(token);
        if (kind == 'n' || kind == 'N') {
            command.number = WholeNumber(token);
            if (!command.number) {
                return false;
            }
        } else if (command.word.empty()) {
            command.word = token;
        }
    }
    return true;
}

} // namespace

std::optional<RigCommand> TakeRigCommand(std::string_view& line) {
    SkipBlanks(line);
    if (line.empty()) {
        return std::nullopt;
    }
    RigCommand command;
    command.separator = TakeSeparator(line);
    SkipBlanks(line);
    const Word* word = TakeWord(line);
    while (word != nullptr && word->arguments == ">") {
        SkipBlanks(line);
        word = TakeWord(line);
    }
    if (word == nullptr) {
        const std::string_view token = TakeToken(line);
        const bool isWord = !token.empty() && (token[0] == '\\' || IsLetterOrDigit(token[0]));
        command.verb = isWord ? RigVerb::NotAvailable : RigVerb::Unreadable;
        line = {};
        return command;
    }
    command.verb = word->verb;
    command.name = word->name;
    if (word->arguments == "*") {
        line = {};
    } else if (!TakeArguments(command, word->arguments, line)) {
        command.verb = RigVerb::Unreadable;
        line = {};
    }
    return command;
}

} // namespace larkspool
