#pragma once

#include "base/ports.h"
#include "script/front_end.h"
#include "script/script_line.h"

#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace vantrel {

class Console;
class SimulatorSteering;

// The replies that script lines queue for the modal boxes. A box with no
// reply queued, or a reply of the wrong kind, fails the script.
class ScriptPrompter final : public Prompter {
public:
    using Failure = std::function<void(const std::string& message)>;
    using Ticker = std::function<void(int count)>;

    void SetFailure(Failure failure) { fail_ = std::move(failure); }
    void SetTicker(Ticker ticker) { tick_ = std::move(ticker); }
    void Queue(const ScriptCommand& reply) { replies_.push_back(reply); }
    std::size_t pending() const { return replies_.size(); }

    void Message(const Text& text, const Text& title) override;
    Answer Ask(const Text& text, const Text& title) override;
    Text Input(const Text& prompt, const Text& title) override;

private:
    ScriptCommand Take(const std::string& box, const Text& text);

    std::deque<ScriptCommand> replies_;
    Failure fail_;
    Ticker tick_;
};

// Runs a script against the real windows of a front-end, one line per turn
// of its event loop, so that a line that opens a modal window hands the
// following lines to that window.
class ScriptRunner final {
public:
    // steering: where server and forecourt lines go, or nullptr when the
    // server is not the simulator.
    ScriptRunner(std::string fileName, std::vector<std::string> lines, Console& console, ScriptFrontEnd& frontEnd,
                 ScriptPrompter& prompter, SimulatorSteering* steering);
    ScriptRunner(const ScriptRunner&) = delete;
    ScriptRunner& operator=(const ScriptRunner&) = delete;

    void Start();
    // Ends the program with exit code 2, naming the current line.
    [[noreturn]] void Fail(const std::string& message) const;

private:
    void Step();
    // Fails the script when what was printed could not be written.
    void CheckStandardOutput() const;
    void Execute(const ScriptCommand& command);
    // A server or forecourt line (`lines` names which, for the failure).
    void Steer(const ScriptCommand& command, const char* lines);
    void Click(const std::string& name, bool twice);
    void Type(const std::string& name, const Text& text);
    void Menu(const std::string& menu, const Text& entry);
    void Shot(const std::string& window, const std::string& file);
    const Text& TextOf(const std::string& name);
    void Tick(int count);

    std::string fileName_;
    std::vector<std::string> lines_;
    std::size_t next_ = 0;
    std::size_t current_ = 0;
    Console& console_;
    ScriptFrontEnd& frontEnd_;
    ScriptPrompter& prompter_;
    SimulatorSteering* steering_;
};

}  // namespace vantrel
