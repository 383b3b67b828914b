#include "release_changes.h"

#include "simulator/answer_text.h"

namespace vantrel::simulation {

namespace {

bool Named(std::string_view member, std::string_view name) {
    if (member.size() != name.size()) {
        return false;
    }
    for (std::size_t i = 0; i < name.size(); ++i) {
        const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
        if (lower(member[i]) != lower(name[i])) {
            return false;
        }
    }
    return true;
}

void Replace(Text& text, TextView from, TextView to) {
    const std::size_t at = text.find(from);
    if (at != Text::npos) {
        text.replace(at, from.size(), to);
    }
}

}  // namespace

std::optional<ReleaseChanges> ReleaseChanges::Parse(std::string_view list, std::string& unknown) {
    ReleaseChanges changes;
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        const std::string_view name = list.substr(0, comma);
        list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
        if (name == "renamed-key") {
            changes.bits_ |= RenamedKey;
        } else if (name == "added-line") {
            changes.bits_ |= AddedLine;
        } else if (name == "raised-error") {
            changes.bits_ |= RaisedError;
        } else if (name == "version") {
            changes.bits_ |= Version;
        } else if (name == "slower") {
            changes.bits_ |= Slower;
        } else {
            unknown = std::string(name);
            return std::nullopt;
        }
    }
    return changes;
}

std::chrono::milliseconds ReleaseChanges::DelayOf(std::string_view member) const {
    return has(Slower) && Named(member, "ReaderInformation") ? std::chrono::milliseconds(60)
                                                             : std::chrono::milliseconds(0);
}

void ReleaseChanges::RaiseFor(std::string_view member) const {
    if (has(RaisedError) && Named(member, "CardQue")) {
        throw RuntimeError(57, "Device I/O error");
    }
}

void ReleaseChanges::ChangeAnswer(std::string_view member, Variant& answer) const {
    if (!answer.is(Variant::Kind::Text)) {
        return;
    }
    Text text = std::move(answer).TakeText();
    if (has(RenamedKey) && Named(member, "FuelingPositionInformation")) {
        Replace(text, u"\r\nUnitPrice=", u"\r\nPrice=");
    }
    if (has(AddedLine) && Named(member, "DispenserInformation")) {
        text += u"Firmware=4.03\r\n";
    }
    if (has(Version) && Named(member, "SystemVersions")) {
        Replace(text, u"Vantrel.Application 10.29", u"Vantrel.Application 10.30");
    }
    answer = Variant::OfText(std::move(text));
}

}  // namespace vantrel::simulation
