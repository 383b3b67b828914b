#include "e2e/reliability.h"

#include <filesystem>
#include <system_error>

namespace vantrel::testing {

std::string ScriptQuoted(TextView text) { return "\"" + Escaped(text) + "\""; }

std::string Printed(const std::string& name, TextView text) { return name + " \"" + Escaped(text) + "\"\n"; }

::testing::AssertionResult EndedByItself(const ScriptRun& run) {
    if (run.timedOut) {
        return ::testing::AssertionFailure()
               << "the run hung and was stopped after " << kScriptTimeLimitSeconds << " s";
    }
    if (run.exitCode < 0) {
        return ::testing::AssertionFailure() << "the run ended through a signal\n" << run.err;
    }
    return ::testing::AssertionSuccess();
}

::testing::AssertionResult EndedThroughTheReport(const ScriptRun& run, int number, const std::string& description) {
    if (::testing::AssertionResult ended = EndedByItself(run); !ended) {
        return ended;
    }
    const std::string report = "Run-time error " + std::to_string(number) + ": " + description;
    const std::string last =
        R"({"op":"report","number":)" + std::to_string(number) + "," + R"("description":")" + description + R"("})";
    if (run.exitCode != 1 || run.err.find(report) == std::string::npos) {
        return ::testing::AssertionFailure()
               << "expected exit code 1 with \"" << report << "\", got " << run.exitCode << "\n"
               << run.err.substr(0, 2000);
    }
    if (run.trace.empty() || run.trace.back() != last) {
        return ::testing::AssertionFailure() << "the trace does not end with the report " << last;
    }
    return ::testing::AssertionSuccess();
}

Text LargeAnswer(std::size_t length) {
    static constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    Text text(u"Start=\0\x1b\r\n", 10);
    text.reserve(length);
    // Lines of about a kilobyte, as long reports are made of.
    for (std::size_t line = 0; text.size() < length; ++line) {
        text += u"Line" + FromUtf8(std::to_string(line)) + u"=";
        for (std::size_t k = 0; k < 1000; ++k) {
            text.push_back(kDigits[(line + k) % 16]);
        }
        text += u"\r\n";
    }
    text.resize(length);
    return text;
}

void RemoveRunFolder(const ScriptRun& run) {
    std::error_code ignored;
    if (!run.directory.empty()) {
        std::filesystem::remove_all(run.directory, ignored);
    }
}

}  // namespace vantrel::testing
