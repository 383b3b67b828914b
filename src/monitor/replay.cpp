#include "replay.h"

#include <algorithm>
#include <chrono>
#include <set>

namespace vantrel {

namespace {

Outcome Send(AutomationObject& server, const CallEvent& event) {
    Outcome now;
    if (event.op == CallEvent::Op::Put && !event.argument) {
        now.notSent = "the record holds no value for this put";
        return now;
    }
    const auto start = std::chrono::steady_clock::now();
    try {
        if (event.op == CallEvent::Op::Put) {
            server.Put(event.member, *event.argument);
        } else if (!event.argument) {
            now.result = server.Call(event.member);
        } else if (event.byRef) {
            Variant argument = *event.argument;  // as it first went out
            now.result = server.CallByRef(event.member, argument);
            now.writtenBack = std::move(argument);
        } else {
            now.result = server.Call(event.member, *event.argument);
        }
    } catch (const RuntimeError& error) {
        now.error = error;
        now.result.reset();
        now.writtenBack.reset();
    }
    now.serverMs = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    return now;
}

std::string EventName(const CallEvent& event) {
    switch (event.op) {
    case CallEvent::Op::Create: return "create " + event.member;
    case CallEvent::Op::Put: return "put " + event.member;
    case CallEvent::Op::Call: return (event.byRef ? "call byref " : "call ") + event.member;
    default: return event.member;
    }
}

std::string SentText(const CallEvent& event) {
    return event.argument ? "sent " + ShortValue(*event.argument) : std::string("sent nothing");
}

std::string Milliseconds(double ms) {
    char text[32];
    std::snprintf(text, sizeof text, "%.3f ms", ms);
    return text;
}

std::string XmlEscaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default:
            // XML cannot carry control characters, not even escaped.
            if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') {
                out += '?';
            } else {
                out += c;
            }
        }
    }
    return out;
}

bool CopyWhole(std::FILE* from, std::FILE* to) {
    std::rewind(from);
    char buffer[64 * 1024];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, from)) > 0) {
        if (std::fwrite(buffer, 1, got, to) != got) {
            return false;
        }
    }
    return !std::ferror(from);
}

}  // namespace

bool MarkedlySlower(double recordedMs, double nowMs) { return nowMs >= 2 * recordedMs && nowMs - recordedMs >= 10; }

ReplayEnd Replay(RecordReader& record, const ServerMaker& make, const Mask* mask, ReplayObserver& observer) {
    std::unique_ptr<AutomationObject> server;
    ReplayEnd end;
    const auto create = [&]() -> bool {
        try {
            server = make();
            return true;
        } catch (const RuntimeError& error) {
            end.problem =
                "the server cannot be created: error " + std::to_string(error.number()) + " " + error.description();
            return false;
        }
    };
    RecordReader::Entry entry;
    for (;;) {
        const RecordReader::Next next = record.Read(entry);
        if (next == RecordReader::Next::End) {
            return end;
        }
        if (next == RecordReader::Next::Stopped) {
            end.problem = record.problem();
            return end;
        }
        const CallEvent& event = entry.event;
        if (event.op == CallEvent::Op::Create) {
            if (!server && !create()) {
                return end;
            }
            Outcome recorded;
            recorded.error = event.error;
            observer.OnReplayed(entry, recorded, Outcome(), Compare(event.member, recorded, Outcome(), mask));
            continue;
        }
        if (event.op != CallEvent::Op::Put && event.op != CallEvent::Op::Call) {
            observer.OnSkipped(entry);
            continue;
        }
        if (!server && !create()) {
            return end;
        }
        const Outcome now = Send(*server, event);
        // The recorded answer is moved, not copied: it may be megabytes.
        Outcome recorded = RecordedOutcome(std::move(entry.event.result), entry.event, entry.extras);
        observer.OnReplayed(entry, recorded, now, Compare(event.member, recorded, now, mask));
    }
}

void ReplayReport::Spool::Line(const std::string& text) {
    if (!file_) {
        memory_ += text;
        memory_ += '\n';
    } else if (std::fwrite(text.data(), 1, text.size(), file_.get()) != text.size() ||
               std::fputc('\n', file_.get()) == EOF) {
        failed_ = true;
    }
}

bool ReplayReport::Spool::CopyTo(std::FILE* out) {
    if (!file_) {
        return std::fwrite(memory_.data(), 1, memory_.size(), out) == memory_.size();
    }
    return !failed_ && CopyWhole(file_.get(), out);
}

ReplayReport::ReplayReport() = default;

ReplayReport::~ReplayReport() = default;

void ReplayReport::CollectJUnit() {
    if (!junitCases_) {
        junitCases_ = std::make_unique<Spool>();
    }
}

bool ReplayReport::anyChange() const { return counts_.changed + counts_.newErrors + counts_.errorsGone + slower_ > 0; }

void ReplayReport::OnReplayed(const RecordReader::Entry& entry, const Outcome&, const Outcome& now,
                              const Comparison& comparison) {
    ++counts_.replayed;
    switch (comparison.verdict) {
    case Verdict::Same: ++counts_.same; break;
    case Verdict::Masked: ++counts_.masked; break;
    case Verdict::Changed: ++counts_.changed; break;
    case Verdict::NewError: ++counts_.newErrors; break;
    case Verdict::ErrorGone: ++counts_.errorsGone; break;
    }
    const CallEvent& event = entry.event;
    const bool failed = comparison.verdict != Verdict::Same && comparison.verdict != Verdict::Masked;
    // Made only where it is shown: the sent value is drawn character by
    // character.
    const auto heading = [&] {
        return "#" + std::to_string(entry.number) + " " + EventName(event) + ", " + SentText(event);
    };
    if (failed) {
        changes_.Line(heading());
        for (const std::string& line : comparison.lines) {
            changes_.Line("    " + line);
        }
    }
    const bool slower = entry.extras.serverMs && now.serverMs && MarkedlySlower(*entry.extras.serverMs, *now.serverMs);
    if (slower) {
        ++slower_;
        slowerLines_.Line("#" + std::to_string(entry.number) + " " + EventName(event) + ": " +
                          Milliseconds(*entry.extras.serverMs) + " -> " + Milliseconds(*now.serverMs));
    }
    if (junitCases_) {
        std::string xml = "  <testcase classname=\"replay\" name=\"" + XmlEscaped(heading()) + "\"";
        if (now.serverMs) {
            char seconds[32];
            std::snprintf(seconds, sizeof seconds, "%.6f", *now.serverMs / 1000);
            xml += std::string(" time=\"") + seconds + "\"";
        }
        if (failed || slower) {
            ++junitFailures_;
            std::string body;
            for (const std::string& line : comparison.lines) {
                body += line + "\n";
            }
            if (slower) {
                body += "markedly slower: " + Milliseconds(*entry.extras.serverMs) + " -> " +
                        Milliseconds(*now.serverMs) + "\n";
            }
            xml += ">\n    <failure message=\"" + (failed ? VerdictText(comparison.verdict) : std::string("slower")) +
                   "\">" + XmlEscaped(body) + "</failure>\n  </testcase>";
        } else {
            xml += "/>";
        }
        junitCases_->Line(xml);
    }
    if (record_ && !recordFailed_) {
        CallEvent replayed = event;
        replayed.error = now.error;
        replayed.result = now.result;
        LineExtras extras;
        if (event.op != CallEvent::Op::Create) {
            extras.serverMs = now.serverMs;
            if (now.writtenBack && event.argument && *now.writtenBack != *event.argument) {
                extras.writtenBack = now.writtenBack;
            }
        }
        recordFailed_ = !WriteJsonLine(replayed, extras, [this](std::string_view piece) {
            return std::fwrite(piece.data(), 1, piece.size(), record_) == piece.size();
        });
    }
}

void ReplayReport::OnSkipped(const RecordReader::Entry& entry) {
    if (record_ && !recordFailed_) {
        recordFailed_ = !WriteJsonLine(entry.event, [this](std::string_view piece) {
            return std::fwrite(piece.data(), 1, piece.size(), record_) == piece.size();
        });
    }
}

bool ReplayReport::WriteReport(std::FILE* out) {
    const std::string summary =
        "replayed " + std::to_string(counts_.replayed) + " events: " + std::to_string(counts_.same) + " same, " +
        std::to_string(counts_.masked) + " masked, " + std::to_string(counts_.changed) + " changed, " +
        std::to_string(counts_.newErrors) + " new errors, " + std::to_string(counts_.errorsGone) + " errors gone\n";
    bool ok = std::fputs(summary.c_str(), out) >= 0 && changes_.CopyTo(out);
    if (slower_ > 0) {
        ok = ok && std::fputs("markedly slower (at least twice the time and 10 ms more):\n", out) >= 0 &&
             slowerLines_.CopyTo(out);
    }
    return ok && std::fflush(out) == 0;
}

bool ReplayReport::WriteJUnit(std::FILE* out, const std::string& suiteName) {
    const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n <testsuite name=\"" +
                             XmlEscaped(suiteName) + "\" tests=\"" + std::to_string(counts_.replayed) +
                             "\" failures=\"" + std::to_string(junitFailures_) + "\" errors=\"0\">\n";
    bool ok = std::fputs(head.c_str(), out) >= 0 && (!junitCases_ || junitCases_->CopyTo(out));
    ok = ok && std::fputs(" </testsuite>\n</testsuites>\n", out) >= 0;
    return ok && std::fflush(out) == 0;
}

namespace {

// The second run of a learning run: the differences as mask rules.
class RuleCollector final : public ReplayObserver {
public:
    void OnReplayed(const RecordReader::Entry& entry, const Outcome& recorded, const Outcome& now,
                    const Comparison& comparison) override {
        if (comparison.verdict == Verdict::Same) {
            return;
        }
        const std::string& member = entry.event.member;
        if (recorded.result && now.result && recorded.result->is(Variant::Kind::Text) &&
            now.result->is(Variant::Kind::Text)) {
            const auto oldKeys = KeyValues(recorded.result->text());
            const auto newKeys = KeyValues(now.result->text());
            if (oldKeys && newKeys) {
                std::set<std::string> keys;
                const auto add = [&](const auto& from, const auto& other) {
                    for (const auto& [key, value] : from) {
                        const auto match = std::find_if(other.begin(), other.end(),
                                                        [&](const auto& entry) { return entry.first == key; });
                        if (match == other.end() || match->second != value) {
                            keys.insert(key.substr(0, key.find('#')));
                        }
                    }
                };
                add(*oldKeys, *newKeys);
                add(*newKeys, *oldKeys);
                for (const std::string& key : keys) {
                    rules.insert(member + " " + key);
                }
                if (!keys.empty()) {
                    return;
                }
            }
        }
        rules.insert(member);
    }
    void OnSkipped(const RecordReader::Entry&) override {}

    std::set<std::string> rules;
};

}  // namespace

Learned LearnMask(const std::string& recordPath, const ServerMaker& make, const std::string& scratchPath) {
    Learned learned;
    std::string problem;
    auto record = RecordReader::Open(recordPath, problem);
    if (!record) {
        learned.problem = problem;
        return learned;
    }
    std::FILE* scratch = std::fopen(scratchPath.c_str(), "wb");
    if (!scratch) {
        learned.problem = "cannot write " + scratchPath;
        return learned;
    }
    ReplayReport first;
    first.WriteRecordTo(scratch);
    const ReplayEnd firstEnd = Replay(*record, make, nullptr, first);
    const bool written = !first.recordFailed() && std::fclose(scratch) == 0;
    if (!firstEnd.problem.empty() || !written) {
        learned.problem = !firstEnd.problem.empty() ? firstEnd.problem : "cannot write " + scratchPath;
        std::remove(scratchPath.c_str());
        return learned;
    }
    auto again = RecordReader::Open(scratchPath, problem);
    RuleCollector collector;
    const ReplayEnd secondEnd = again ? Replay(*again, make, nullptr, collector) : ReplayEnd{problem};
    again.reset();
    std::remove(scratchPath.c_str());
    learned.problem = secondEnd.problem;
    learned.rules.assign(collector.rules.begin(), collector.rules.end());
    return learned;
}

}  // namespace vantrel
