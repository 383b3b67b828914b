#include "trace_json.h"

#include <cmath>
#include <cstdio>

namespace vantrel {

std::string JsonString(TextView text) {
    static constexpr char kHex[] = "0123456789abcdef";
    std::string out = "\"";
    out.reserve(text.size() + 2);
    for (const char16_t c : text) {
        switch (c) {
        case u'"': out += "\\\""; break;
        case u'\\': out += "\\\\"; break;
        case u'\r': out += "\\r"; break;
        case u'\n': out += "\\n"; break;
        case u'\t': out += "\\t"; break;
        default:
            if (c >= 0x20 && c < 0x7F) {
                out.push_back(static_cast<char>(c));
            } else {
                // Everything else as \uXXXX keeps the file ASCII and exact,
                // lone surrogates included.
                out += "\\u";
                for (int shift = 12; shift >= 0; shift -= 4) {
                    out.push_back(kHex[(c >> shift) & 0xF]);
                }
            }
        }
    }
    out.push_back('"');
    return out;
}

namespace {

std::string JsonUtf8(std::string_view utf8) { return JsonString(FromUtf8(utf8)); }

std::string JsonNumber(double value) {
    if (!std::isfinite(value)) {
        return "null";
    }
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%.17g", value);
    return buffer;
}

}  // namespace

std::string ToJson(const Variant& value) {
    switch (value.kind()) {
    case Variant::Kind::Empty: return R"({"empty":true})";
    case Variant::Kind::Null: return R"({"null":true})";
    case Variant::Kind::Text: return "{\"text\":" + JsonString(value.text()) + "}";
    case Variant::Kind::Int16: return "{\"i2\":" + std::to_string(value.int16()) + "}";
    case Variant::Kind::Int32: return "{\"i4\":" + std::to_string(value.int32()) + "}";
    case Variant::Kind::Double: return "{\"r8\":" + JsonNumber(value.real()) + "}";
    case Variant::Kind::Boolean: return std::string("{\"bool\":") + (value.boolean() ? "true" : "false") + "}";
    }
    return "{}";
}

std::string ToJsonLine(const CallEvent& event) {
    std::string out;
    const auto error = [&] {
        if (event.error) {
            out += ",\"error\":{\"number\":" + std::to_string(event.error->number()) +
                   ",\"description\":" + JsonUtf8(event.error->description()) + "}";
        }
    };
    switch (event.op) {
    case CallEvent::Op::Create:
        out = "{\"op\":\"create\",\"progid\":" + JsonUtf8(event.member);
        error();
        break;
    case CallEvent::Op::Put:
        out = "{\"op\":\"put\",\"member\":" + JsonUtf8(event.member);
        if (event.argument) {
            out += ",\"value\":" + ToJson(*event.argument);
        }
        error();
        break;
    case CallEvent::Op::Call:
        out = "{\"op\":\"call\",\"member\":" + JsonUtf8(event.member);
        if (event.argument) {
            out += ",\"arg\":" + ToJson(*event.argument);
            if (event.byRef) {
                out += ",\"byref\":true";
            }
        }
        if (event.error) {
            error();
        } else if (event.result) {
            out += ",\"result\":" + ToJson(*event.result);
        }
        break;
    case CallEvent::Op::MessageBox:
        out = "{\"op\":\"msgbox\",\"text\":" + JsonString(event.text) + ",\"title\":" + JsonString(event.title) +
              ",\"buttons\":" + (event.buttons == CallEvent::Buttons::Ok ? "\"ok\"" : "\"yesno\"") +
              ",\"answer\":" + JsonString(event.answer);
        break;
    case CallEvent::Op::InputBox:
        out = "{\"op\":\"inputbox\",\"prompt\":" + JsonString(event.text) + ",\"title\":" + JsonString(event.title) +
              ",\"answer\":" + JsonString(event.answer);
        break;
    case CallEvent::Op::Report:
        out = "{\"op\":\"report\",\"number\":" + std::to_string(event.error ? event.error->number() : 0) +
              ",\"description\":" + JsonUtf8(event.error ? event.error->description() : std::string());
        break;
    }
    out.push_back('}');
    return out;
}

TraceFile::TraceFile(const std::string& path)
    : file_(std::fopen(path.c_str(), "wb")) {}

TraceFile::~TraceFile() {
    if (file_) {
        std::fclose(file_);
    }
}

void TraceFile::OnEvent(const CallEvent& event) {
    if (!file_) {
        return;
    }
    const std::string line = ToJsonLine(event) + "\n";
    std::fwrite(line.data(), 1, line.size(), file_);
    std::fflush(file_);
}

}  // namespace vantrel
