// Any bytes as the version server's reply: the offer stays short, and skipping it makes a question
// that fits its fields.
#include "Input.h"
#include "platform/Desktop.h"
#include "shell/VersionCheck.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace larkspool;
    const std::string_view content(reinterpret_cast<const char*>(data), size);
    const auto newer = ReadUpdateReply(content);
    const bool isLatest = content == "LATEST" || content.starts_with("LATEST ");
    fuzz::Require(newer.has_value() != isLatest, "only the word says that nothing is newer");
    if (!newer) {
        return 0;
    }
    fuzz::Require(newer->text.size() <= 100, "the offer is short");
    fuzz::Require(content.starts_with(newer->text), "the offer is what the server wrote");
    const UpdateQuestion next = MakeUpdateQuestion(1, "130", newer->digits, {12, 5});
    fuzz::Require(next.version.size() == 3, "the next question has three digits");
    fuzz::Require(UpdateAddress("h", next) ==
                      "http://h/version/versionb.html?p=0001" + next.version + "M1205",
                  "the next question has its form");
    return 0;
}
