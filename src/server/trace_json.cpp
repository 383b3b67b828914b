#include "trace_json.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>

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

void WriteEvent(JsonOut& out, const CallEvent& event) {
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
