#include "trace_json.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

constexpr char kHex[] = "0123456789abcdef";

// Writes JSON text in pieces to a sink, through a buffer of bounded size: an
// event of many megabytes never becomes one string in memory.
class JsonOut {
public:
    using Sink = std::function<bool(std::string_view piece)>;
    explicit JsonOut(Sink sink)
        : sink_(std::move(sink)) {
        buffer_.reserve(kBuffer);
    }

    void Raw(std::string_view text) {
        if (buffer_.size() + text.size() > kBuffer) {
            Flush();
        }
        if (text.size() > kBuffer) {
            Deliver(text);
        } else {
            buffer_.append(text);
        }
    }
    void Char(char c) {
        if (buffer_.size() >= kBuffer) {
            Flush();
        }
        buffer_.push_back(c);
    }
    void String(TextView text) {
        Char('"');
        for (const char16_t c : text) {
            switch (c) {
            case u'"': Raw("\\\""); break;
            case u'\\': Raw("\\\\"); break;
            case u'\r': Raw("\\r"); break;
            case u'\n': Raw("\\n"); break;
            case u'\t': Raw("\\t"); break;
            default:
                if (c >= 0x20 && c < 0x7F) {
                    Char(static_cast<char>(c));
                } else {
                    // Everything else as \uXXXX keeps the file ASCII and
                    // exact, lone surrogates included.
                    const char escape[6] = {
                        '\\', 'u', kHex[(c >> 12) & 0xF], kHex[(c >> 8) & 0xF], kHex[(c >> 4) & 0xF], kHex[c & 0xF]};
                    Raw(std::string_view(escape, sizeof escape));
                }
            }
        }
        Char('"');
    }
    void Utf8String(std::string_view utf8) { String(FromUtf8(utf8)); }
    void Number(std::int64_t value) { Raw(std::to_string(value)); }
    void Real(double value) {
        if (!std::isfinite(value)) {
            Raw("null");
            return;
        }
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", value);
        Raw(text);
    }
    // False once the sink has refused a piece.
    bool Flush() {
        if (!buffer_.empty()) {
            Deliver(buffer_);
            buffer_.clear();
        }
        return ok_;
    }

private:
    static constexpr std::size_t kBuffer = 64 * 1024;
    void Deliver(std::string_view piece) {
        if (ok_ && !sink_(piece)) {
            ok_ = false;
        }
    }

    Sink sink_;
    std::string buffer_;
    bool ok_ = true;
};

void WriteValue(JsonOut& out, const Variant& value) {
    switch (value.kind()) {
    case Variant::Kind::Empty: out.Raw(R"({"empty":true})"); return;
    case Variant::Kind::Null: out.Raw(R"({"null":true})"); return;
    case Variant::Kind::Text:
        out.Raw("{\"text\":");
        out.String(value.text());
        break;
    case Variant::Kind::Int16:
        out.Raw("{\"i2\":");
        out.Number(value.int16());
        break;
    case Variant::Kind::Int32:
        out.Raw("{\"i4\":");
        out.Number(value.int32());
        break;
    case Variant::Kind::Double:
        out.Raw("{\"r8\":");
        out.Real(value.real());
        break;
    case Variant::Kind::Boolean: out.Raw(value.boolean() ? R"({"bool":true})" : R"({"bool":false})"); return;
    case Variant::Kind::Single: {
        // Nine digits give the 32-bit value back exactly.
        char text[32];
        std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value.single()));
        out.Raw("{\"r4\":");
        out.Raw(std::isfinite(value.single()) ? text : "null");
        break;
    }
    case Variant::Kind::Currency:
        // As text: a double would lose the last of its decimals.
        out.Raw("{\"cy\":");
        out.String(ToText(value));
        break;
    case Variant::Kind::Date:
        out.Raw("{\"date\":");
        out.Real(value.dateSerial());
        out.Raw(",\"text\":");
        out.String(value.dateText());
        break;
    }
    out.Char('}');
}

void WriteExtras(JsonOut& out, const LineExtras& extras) {
    if (extras.serverMs) {
        char took[40];
        std::snprintf(took, sizeof took, "%.3f", std::isfinite(*extras.serverMs) ? *extras.serverMs : 0.0);
        out.Raw("\"server_ms\":");
        out.Raw(took);
        out.Char(',');
    }
    if (extras.writtenBack) {
        out.Raw("\"byref_back\":");
        WriteValue(out, *extras.writtenBack);
        out.Char(',');
    }
}

void WriteEvent(JsonOut& out, const CallEvent& event, const LineExtras* extras = nullptr) {
    if (extras) {
        // The extras stand first, as in the call monitor's export, so that
        // the rest of the line is the plain trace's line.
        out.Char('{');
        WriteExtras(out, *extras);
        bool first = true;
        JsonOut rest([&out, &first](std::string_view piece) {
            // The plain line's own opening brace is already written.
            out.Raw(first ? piece.substr(1) : piece);
            first = false;
            return true;
        });
        WriteEvent(rest, event);
        rest.Flush();
        return;
    }
    const auto error = [&] {
        if (event.error) {
            out.Raw(",\"error\":{\"number\":");
            out.Number(event.error->number());
            out.Raw(",\"description\":");
            out.Utf8String(event.error->description());
            out.Char('}');
        }
    };
    switch (event.op) {
    case CallEvent::Op::Create:
        out.Raw("{\"op\":\"create\",\"progid\":");
        out.Utf8String(event.member);
        error();
        break;
    case CallEvent::Op::Put:
        out.Raw("{\"op\":\"put\",\"member\":");
        out.Utf8String(event.member);
        if (event.argument) {
            out.Raw(",\"value\":");
            WriteValue(out, *event.argument);
        }
        error();
        break;
    case CallEvent::Op::Call:
        out.Raw("{\"op\":\"call\",\"member\":");
        out.Utf8String(event.member);
        if (event.argument) {
            out.Raw(",\"arg\":");
            WriteValue(out, *event.argument);
            if (event.byRef) {
                out.Raw(",\"byref\":true");
            }
        }
        if (event.error) {
            error();
        } else if (event.result) {
            out.Raw(",\"result\":");
            WriteValue(out, *event.result);
        }
        break;
    case CallEvent::Op::MessageBox:
        out.Raw("{\"op\":\"msgbox\",\"text\":");
        out.String(event.text);
        out.Raw(",\"title\":");
        out.String(event.title);
        out.Raw(event.buttons == CallEvent::Buttons::Ok ? ",\"buttons\":\"ok\"" : ",\"buttons\":\"yesno\"");
        out.Raw(",\"answer\":");
        out.String(event.answer);
        break;
    case CallEvent::Op::InputBox:
        out.Raw("{\"op\":\"inputbox\",\"prompt\":");
        out.String(event.text);
        out.Raw(",\"title\":");
        out.String(event.title);
        out.Raw(",\"answer\":");
        out.String(event.answer);
        break;
    case CallEvent::Op::Report:
        out.Raw("{\"op\":\"report\",\"number\":");
        out.Number(event.error ? event.error->number() : 0);
        out.Raw(",\"description\":");
        out.Utf8String(event.error ? event.error->description() : std::string());
        break;
    }
    out.Char('}');
}

// The whole of what a writer makes, as one string.
template <typename Write>
std::string Collected(Write&& write) {
    std::string text;
    JsonOut out([&text](std::string_view piece) {
        text.append(piece);
        return true;
    });
    write(out);
    out.Flush();
    return text;
}

}  // namespace

std::string JsonString(TextView text) {
    return Collected([&](JsonOut& out) { out.String(text); });
}

std::string ToJson(const Variant& value) {
    return Collected([&](JsonOut& out) { WriteValue(out, value); });
}

std::string ToJsonLine(const CallEvent& event) {
    return Collected([&](JsonOut& out) { WriteEvent(out, event); });
}

bool WriteJsonLine(const CallEvent& event, const std::function<bool(std::string_view piece)>& sink) {
    JsonOut out(sink);
    WriteEvent(out, event);
    out.Char('\n');
    return out.Flush();
}

bool WriteJsonLine(const CallEvent& event, const LineExtras& extras,
                   const std::function<bool(std::string_view piece)>& sink) {
    JsonOut out(sink);
    WriteEvent(out, event, &extras);
    out.Char('\n');
    return out.Flush();
}

TraceFile::TraceFile(std::FILE* file, std::string path)
    : file_(file)
    , path_(std::move(path)) {}

TraceFile::~TraceFile() {
    if (file_) {
        std::fclose(file_);
    }
}

void TraceFile::OnEvent(const CallEvent& event) {
    if (!file_ || failed_) {
        return;
    }
    errno = 0;
    const bool written = WriteJsonLine(event, [this](std::string_view piece) {
        return std::fwrite(piece.data(), 1, piece.size(), file_) == piece.size();
    });
    // Flushed at once, so that the trace is complete even when the program
    // ends through the error report.
    if (written && std::fflush(file_) == 0) {
        return;
    }
    failed_ = true;
    const int error = errno;
    if (onFailure_) {
        onFailure_("cannot write the trace " + path_ + ": " +
                   (error != 0 ? std::string(std::strerror(error)) : std::string("the write failed")));
    }
}

}  // namespace vantrel

namespace vantrel {

namespace {

// A JSON value as far as a record needs one: objects keep their members in
// order, numbers their own digits, so that a 32-bit number is read exactly.
struct JsonValue {
    enum class Kind {
        Null,
        Boolean,
        Number,
        String,
        Object,
        Array,
    };
    Kind kind = Kind::Null;
    bool boolean = false;
    std::string number;
    Text string;
    std::vector<std::pair<std::string, JsonValue>> members;

    const JsonValue* Find(std::string_view name) const {
        for (const auto& [key, value] : members) {
            if (key == name) {
                return &value;
            }
        }
        return nullptr;
    }
    JsonValue* Find(std::string_view name) {
        return const_cast<JsonValue*>(static_cast<const JsonValue&>(*this).Find(name));
    }
};

// Reads one JSON text. Fails with a short reason and the byte offset where
// it went wrong; never recurses deeper than kDepth.
class JsonParser {
public:
    explicit JsonParser(std::string_view text)
        : text_(text) {}

    bool Parse(JsonValue& value) {
        if (!Value(value, 0)) {
            return false;
        }
        Blanks();
        return at_ == text_.size() || Fail("more after the object");
    }
    const std::string& problem() const { return problem_; }

protected:
    static constexpr int kDepth = 16;

    bool Fail(const std::string& why) {
        if (problem_.empty()) {
            problem_ = why + " at byte " + std::to_string(at_ + 1);
        }
        return false;
    }
    void Blanks() {
        while (at_ < text_.size() &&
               (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\r' || text_[at_] == '\n')) {
            ++at_;
        }
    }
    bool Literal(std::string_view word) {
        if (text_.substr(at_, word.size()) != word) {
            return Fail("no JSON value");
        }
        at_ += word.size();
        return true;
    }
    bool Value(JsonValue& value, int depth) {
        if (depth > kDepth) {
            return Fail("nested too deep");
        }
        Blanks();
        if (at_ >= text_.size()) {
            return Fail("the line ends inside a value");
        }
        const char c = text_[at_];
        if (c == '{') {
            value.kind = JsonValue::Kind::Object;
            return Members(value, depth);
        }
        if (c == '[') {
            value.kind = JsonValue::Kind::Array;
            return Members(value, depth);
        }
        if (c == '"') {
            value.kind = JsonValue::Kind::String;
            return String(value.string);
        }
        if (c == 't' || c == 'f') {
            value.kind = JsonValue::Kind::Boolean;
            value.boolean = c == 't';
            return Literal(c == 't' ? "true" : "false");
        }
        if (c == 'n') {
            value.kind = JsonValue::Kind::Null;
            return Literal("null");
        }
        if (c == '-' || (c >= '0' && c <= '9')) {
            value.kind = JsonValue::Kind::Number;
            const std::size_t start = at_;
            while (at_ < text_.size() && std::strchr("+-.eE0123456789", text_[at_]) && text_[at_] != '\0') {
                ++at_;
            }
            value.number = std::string(text_.substr(start, at_ - start));
            return true;
        }
        return Fail("no JSON value");
    }
    // An object's members or an array's elements: one loop for both, the
    // object's with a name and a colon before each value.
    bool Members(JsonValue& value, int depth) {
        const bool object = value.kind == JsonValue::Kind::Object;
        const char close = object ? '}' : ']';
        const char* inside = object ? "the line ends inside an object" : "the line ends inside an array";
        ++at_;                     // { or [
        value.members.reserve(8);  // a trace's objects have a few members
        Blanks();
        if (at_ < text_.size() && text_[at_] == close) {
            ++at_;
            return true;
        }
        for (;;) {
            std::string name;
            if (object) {
                Blanks();
                if (at_ >= text_.size() || text_[at_] != '"') {
                    return Fail(at_ >= text_.size() ? inside : "no member name");
                }
                if (!Name(name)) {
                    return false;
                }
                Blanks();
                if (at_ >= text_.size() || text_[at_] != ':') {
                    return Fail("no colon after a member name");
                }
                ++at_;
            }
            JsonValue member;
            if (!Value(member, depth + 1)) {
                return false;
            }
            value.members.emplace_back(std::move(name), std::move(member));
            Blanks();
            if (at_ < text_.size() && text_[at_] == ',') {
                ++at_;
                continue;
            }
            if (at_ < text_.size() && text_[at_] == close) {
                ++at_;
                return true;
            }
            return Fail(at_ >= text_.size() ? inside : "no comma between members");
        }
    }
    // A member name: plain ASCII as it stands, anything else through the
    // text's own reading.
    bool Name(std::string& name) {
        const std::size_t end = text_.find('"', at_ + 1);
        const std::string_view plain = text_.substr(at_ + 1, end == std::string_view::npos ? 0 : end - at_ - 1);
        if (end != std::string_view::npos && std::all_of(plain.begin(), plain.end(), [](char c) {
                return c != '\\' && static_cast<unsigned char>(c) >= 0x20 && (c & 0x80) == 0;
            })) {
            name.assign(plain);
            at_ = end + 1;
            return true;
        }
        Text escaped;
        if (!String(escaped)) {
            return false;
        }
        name = ToUtf8(escaped);
        return true;
    }
    bool Hex4(char16_t& code) {
        if (at_ + 4 > text_.size()) {
            return Fail("the line ends inside an escape");
        }
        code = 0;
        for (int i = 0; i < 4; ++i) {
            const char h = text_[at_++];
            const char* digit = std::strchr(kHex, h >= 'A' && h <= 'F' ? static_cast<char>(h - 'A' + 'a') : h);
            if (h == '\0' || !digit) {
                return Fail("a bad \\u escape");
            }
            code = static_cast<char16_t>(code * 16 + (digit - kHex));
        }
        return true;
    }
    bool String(Text& out) {
        ++at_;  // "
        for (;;) {
            // The plain run up to the next quote or backslash, in one go:
            // a 16 MiB answer is read in a few passes, not character by
            // character through the switch below.
            std::size_t end = at_;
            unsigned char high = 0;
            while (end < text_.size() && text_[end] != '"' && text_[end] != '\\' &&
                   static_cast<unsigned char>(text_[end]) >= 0x20) {
                high |= static_cast<unsigned char>(text_[end]) & 0x80;
                ++end;
            }
            if (end > at_) {
                const std::string_view run = text_.substr(at_, end - at_);
                if (high == 0) {
                    AppendBytes(out, run);
                } else {
                    out += FromUtf8(run);
                }
                at_ = end;
            }
            if (at_ >= text_.size()) {
                return Fail("the line ends inside a text");
            }
            const char c = text_[at_];
            if (c == '"') {
                ++at_;
                return true;
            }
            if (c != '\\') {
                return Fail("a control character inside a text");
            }
            if (++at_ >= text_.size()) {
                return Fail("the line ends inside an escape");
            }
            const char e = text_[at_++];
            switch (e) {
            case '"': out.push_back(u'"'); break;
            case '\\': out.push_back(u'\\'); break;
            case '/': out.push_back(u'/'); break;
            case 'b': out.push_back(u'\b'); break;
            case 'f': out.push_back(u'\f'); break;
            case 'n': out.push_back(u'\n'); break;
            case 'r': out.push_back(u'\r'); break;
            case 't': out.push_back(u'\t'); break;
            case 'u': {
                // Each \uXXXX is one 16-bit character, a lone surrogate too:
                // the text is read back exactly as it was written.
                char16_t code = 0;
                if (!Hex4(code)) {
                    return false;
                }
                out.push_back(code);
                break;
            }
            default: --at_; return Fail("a bad escape");
            }
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::string problem_;
};

bool WholeNumber(const JsonValue& value, std::int64_t low, std::int64_t high, std::int64_t& number) {
    if (value.kind != JsonValue::Kind::Number || value.number.empty()) {
        return false;
    }
    const char* begin = value.number.data();
    const char* end = begin + value.number.size();
    const auto [stop, error] = std::from_chars(begin, end, number);
    return error == std::errc() && stop == end && number >= low && number <= high;
}

bool RealNumber(const JsonValue& value, double& number) {
    if (value.kind == JsonValue::Kind::Null) {  // written for a value that is no finite number
        number = std::numeric_limits<double>::quiet_NaN();
        return true;
    }
    if (value.kind != JsonValue::Kind::Number) {
        return false;
    }
    char* stop = nullptr;
    number = std::strtod(value.number.c_str(), &stop);
    return stop == value.number.c_str() + value.number.size();
}

// "123456789012.3456" or "-0.0015" in ten-thousandths.
bool CurrencyOf(TextView text, std::int64_t& tenThousandths) {
    const std::string ascii = ToUtf8(text);
    std::size_t at = 0;
    const bool negative = !ascii.empty() && ascii[0] == '-';
    at += negative ? 1 : 0;
    std::int64_t whole = 0;
    std::int64_t fraction = 0;
    int digits = 0;
    int decimals = 0;
    for (; at < ascii.size() && ascii[at] != '.'; ++at, ++digits) {
        if (ascii[at] < '0' || ascii[at] > '9' || digits > 15) {
            return false;
        }
        whole = whole * 10 + (ascii[at] - '0');
    }
    if (at < ascii.size()) {
        for (++at; at < ascii.size(); ++at, ++decimals) {
            if (ascii[at] < '0' || ascii[at] > '9' || decimals >= 4) {
                return false;
            }
            fraction = fraction * 10 + (ascii[at] - '0');
        }
    }
    if (digits == 0 && decimals == 0) {
        return false;
    }
    for (int d = decimals; d < 4; ++d) {
        fraction *= 10;
    }
    tenThousandths = (whole * 10000 + fraction) * (negative ? -1 : 1);
    return true;
}

bool VariantOf(JsonValue& json, Variant& value, std::string& problem) {
    problem = "a value that is not one of the trace's kinds";
    if (json.kind != JsonValue::Kind::Object || json.members.empty()) {
        return false;
    }
    auto& [kind, inner] = json.members.front();
    std::int64_t whole = 0;
    double real = 0;
    if (kind == "text" && inner.kind == JsonValue::Kind::String) {
        value = Variant::OfText(std::move(inner.string));  // an answer of megabytes is not copied
    } else if (kind == "i2" && WholeNumber(inner, INT16_MIN, INT16_MAX, whole)) {
        value = Variant::OfInt16(static_cast<std::int16_t>(whole));
    } else if (kind == "i4" && WholeNumber(inner, INT32_MIN, INT32_MAX, whole)) {
        value = Variant::OfInt32(static_cast<std::int32_t>(whole));
    } else if (kind == "r8" && RealNumber(inner, real)) {
        value = Variant::OfDouble(real);
    } else if (kind == "r4" && RealNumber(inner, real)) {
        value = Variant::OfSingle(static_cast<float>(real));
    } else if (kind == "cy" && inner.kind == JsonValue::Kind::String && CurrencyOf(inner.string, whole)) {
        value = Variant::OfCurrency(whole);
    } else if (kind == "date" && RealNumber(inner, real) && json.Find("text") &&
               json.Find("text")->kind == JsonValue::Kind::String) {
        value = Variant::OfDate(real, json.Find("text")->string);
    } else if (kind == "bool" && inner.kind == JsonValue::Kind::Boolean) {
        value = Variant::OfBoolean(inner.boolean);
    } else if (kind == "empty") {
        value = Variant();
    } else if (kind == "null") {
        value = Variant::Null();
    } else {
        return false;
    }
    return true;
}

bool TextField(const JsonValue& object, std::string_view name, Text& text) {
    const JsonValue* field = object.Find(name);
    if (!field || field->kind != JsonValue::Kind::String) {
        return false;
    }
    text = field->string;
    return true;
}

bool ErrorOf(const JsonValue& json, std::optional<RuntimeError>& error) {
    std::int64_t number = 0;
    Text description;
    const JsonValue* numberField = json.Find("number");
    if (json.kind != JsonValue::Kind::Object || !numberField ||
        !WholeNumber(*numberField, INT32_MIN, INT32_MAX, number) || !TextField(json, "description", description)) {
        return false;
    }
    error.emplace(static_cast<int>(number), ToUtf8(description));
    return true;
}

// The trace's own line read straight into the event, with no tree of
// values in between: the keys in the order the writer puts them, no blanks,
// the common value kinds. Anything else (blanks, another order, a replay's
// extras, the rarer kinds, a damaged line) is left to the general reader,
// and every line read here reads the same there.
class ShapeReader : JsonParser {
public:
    explicit ShapeReader(std::string_view text)
        : JsonParser(text) {}

    bool Read(CallEvent& event) {
        if (Take(R"({"op":"call","member":")")) {
            event.op = CallEvent::Op::Call;
            if (!Name(event.member)) {
                return false;
            }
            if (Take(R"(,"arg":)")) {
                if (!Argument(event.argument)) {
                    return false;
                }
                event.byRef = Take(R"(,"byref":true)");
            }
            if (Take(R"(,"result":)")) {
                if (!Argument(event.result)) {
                    return false;
                }
            } else if (!Error(event.error)) {
                return false;
            }
        } else if (Take(R"({"op":"put","member":")")) {
            event.op = CallEvent::Op::Put;
            if (!Name(event.member) || (Take(R"(,"value":)") && !Argument(event.argument)) || !Error(event.error)) {
                return false;
            }
        } else if (Take(R"({"op":"create","progid":")")) {
            event.op = CallEvent::Op::Create;
            if (!Name(event.member) || !Error(event.error)) {
                return false;
            }
        } else {
            return false;
        }
        return Take("}") && at_ == text_.size();
    }

private:
    bool Take(std::string_view word) {
        if (text_.substr(at_, word.size()) != word) {
            return false;
        }
        at_ += word.size();
        return true;
    }
    // A name of plain ASCII up to its closing quote, the opening one taken.
    bool Name(std::string& name) {
        const std::size_t start = at_;
        for (; at_ < text_.size() && text_[at_] != '"'; ++at_) {
            const auto c = static_cast<unsigned char>(text_[at_]);
            if (c == '\\' || c < 0x20 || c >= 0x80) {
                return false;
            }
        }
        if (at_ >= text_.size()) {
            return false;
        }
        name.assign(text_.substr(start, at_ - start));
        ++at_;
        return true;
    }
    // The characters the general reader takes as a number.
    std::string_view NumberRun() {
        const std::size_t start = at_;
        while (at_ < text_.size() && text_[at_] != '\0' && std::strchr("+-.eE0123456789", text_[at_])) {
            ++at_;
        }
        return text_.substr(start, at_ - start);
    }
    bool Whole(std::int64_t low, std::int64_t high, std::int64_t& number) {
        const std::string_view run = NumberRun();
        const auto [stop, error] = std::from_chars(run.data(), run.data() + run.size(), number);
        return !run.empty() && error == std::errc() && stop == run.data() + run.size() && number >= low &&
               number <= high;
    }
    bool Real(double& number) {
        const std::string_view run = NumberRun();
        char digits[64];
        if (run.empty() || run.size() >= sizeof digits) {
            return false;
        }
        std::memcpy(digits, run.data(), run.size());
        digits[run.size()] = '\0';
        char* stop = nullptr;
        number = std::strtod(digits, &stop);
        return stop == digits + run.size();
    }
    // A text, its room taken at once: up to the first quote that no
    // backslash stands before, never less than the text needs.
    bool Quoted(Text& text) {
        if (at_ >= text_.size() || text_[at_] != '"') {
            return false;
        }
        std::size_t end = at_;
        do {
            end = text_.find('"', end + 1);
        } while (end != std::string_view::npos && text_[end - 1] == '\\');
        text.reserve(end == std::string_view::npos ? 0 : end - at_);
        return String(text);
    }
    bool Argument(std::optional<Variant>& into) {
        std::int64_t whole = 0;
        double real = 0;
        if (Take(R"({"text":)")) {
            Text text;
            if (!Quoted(text)) {
                return false;
            }
            into = Variant::OfText(std::move(text));
        } else if (Take(R"({"i2":)")) {
            if (!Whole(INT16_MIN, INT16_MAX, whole)) {
                return false;
            }
            into = Variant::OfInt16(static_cast<std::int16_t>(whole));
        } else if (Take(R"({"i4":)")) {
            if (!Whole(INT32_MIN, INT32_MAX, whole)) {
                return false;
            }
            into = Variant::OfInt32(static_cast<std::int32_t>(whole));
        } else if (Take(R"({"r8":)")) {
            if (!Real(real)) {
                return false;
            }
            into = Variant::OfDouble(real);
        } else if (Take(R"({"bool":)")) {
            const bool yes = Take("true");
            if (!yes && !Take("false")) {
                return false;
            }
            into = Variant::OfBoolean(yes);
        } else if (Take(R"({"empty":true)")) {
            into = Variant();
        } else if (Take(R"({"null":true)")) {
            into = Variant::Null();
        } else {
            return false;
        }
        return Take("}");
    }
    bool Error(std::optional<RuntimeError>& error) {
        if (!Take(R"(,"error":{"number":)")) {
            return true;  // none, or not in the usual shape: then the line's end is not found
        }
        std::int64_t number = 0;
        Text description;
        if (!Whole(INT32_MIN, INT32_MAX, number) || !Take(R"(,"description":)") || !Quoted(description) || !Take("}")) {
            return false;
        }
        error.emplace(static_cast<int>(number), ToUtf8(description));
        return true;
    }
};

}  // namespace

ReadEvent ReadJsonLine(std::string_view line) {
    ReadEvent fast;
    if (ShapeReader(line).Read(fast.event)) {
        return fast;
    }
    return ReadAnyJsonLine(line);
}

ReadEvent ReadAnyJsonLine(std::string_view line) {
    ReadEvent read;
    const auto notRecord = [&read](std::string problem) {
        read.status = ReadEvent::Status::NotARecord;
        read.problem = std::move(problem);
        return std::move(read);
    };
    JsonValue json;
    JsonParser parser(line);
    if (!parser.Parse(json)) {
        return notRecord("not JSON: " + parser.problem());
    }
    if (json.kind != JsonValue::Kind::Object) {
        return notRecord("not a JSON object");
    }
    Text op;
    if (!TextField(json, "op", op)) {
        return notRecord("no \"op\" naming the event's kind");
    }
    CallEvent& event = read.event;
    std::string problem;
    const auto value = [&](std::string_view name, std::optional<Variant>& into) {
        JsonValue* field = json.Find(name);
        if (!field) {
            return true;
        }
        Variant parsed;
        if (!VariantOf(*field, parsed, problem)) {
            problem = "\"" + std::string(name) + "\" is " + problem;
            return false;
        }
        into = std::move(parsed);
        return true;
    };
    const auto error = [&] {
        const JsonValue* field = json.Find("error");
        if (field && !ErrorOf(*field, event.error)) {
            problem = "\"error\" has no number and description";
            return false;
        }
        return true;
    };
    const auto text = [&](std::string_view name, Text& into) {
        if (!TextField(json, name, into)) {
            problem = "no text \"" + std::string(name) + "\"";
            return false;
        }
        return true;
    };
    Text member;
    bool ok = true;
    if (op == u"create") {
        event.op = CallEvent::Op::Create;
        ok = text("progid", member) && error();
    } else if (op == u"put") {
        event.op = CallEvent::Op::Put;
        ok = text("member", member) && value("value", event.argument) && error();
    } else if (op == u"call") {
        event.op = CallEvent::Op::Call;
        ok = text("member", member) && value("arg", event.argument) && value("result", event.result) && error();
        const JsonValue* byRef = json.Find("byref");
        event.byRef = byRef && byRef->kind == JsonValue::Kind::Boolean && byRef->boolean;
    } else if (op == u"msgbox") {
        event.op = CallEvent::Op::MessageBox;
        Text buttons;
        ok = text("text", event.text) && text("title", event.title) && text("buttons", buttons) &&
             text("answer", event.answer);
        event.buttons = buttons == u"yesno" ? CallEvent::Buttons::YesNo : CallEvent::Buttons::Ok;
    } else if (op == u"inputbox") {
        event.op = CallEvent::Op::InputBox;
        ok = text("prompt", event.text) && text("title", event.title) && text("answer", event.answer);
    } else if (op == u"report") {
        event.op = CallEvent::Op::Report;
        ok = ErrorOf(json, event.error);
        problem = "a report without number and description";
    } else {
        read.status = ReadEvent::Status::UnknownKind;
        read.problem = "an event of a kind this program does not know: \"" + ToUtf8(op) + "\"";
        return read;
    }
    if (!ok) {
        return notRecord("a \"" + ToUtf8(op) + "\" event with " + problem);
    }
    event.member = ToUtf8(member);
    if (const JsonValue* took = json.Find("server_ms")) {
        double ms = 0;
        if (took->kind == JsonValue::Kind::Number && RealNumber(*took, ms)) {
            read.extras.serverMs = ms;
        }
    }
    std::optional<Variant> back;
    if (!value("byref_back", back)) {
        return notRecord("a \"" + ToUtf8(op) + "\" event with " + problem);
    }
    read.extras.writtenBack = std::move(back);
    return read;
}

}  // namespace vantrel
