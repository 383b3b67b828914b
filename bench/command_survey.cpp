#include "command_survey.h"

#include "quiet_console.h"
#include "app/all_forms.h"

#include <algorithm>

namespace vantrel::bench {

namespace {

constexpr char kOtherDevicesForm[] = "OtherDevicesForm";

// A command data block is lines of key, "=" and value; a bare value ("07")
// or a number is not one.
bool SendsBlock(const Observed& observed) {
    return std::any_of(observed.assignments.begin(), observed.assignments.end(), [](const auto& assignment) {
        const Variant& value = assignment.second;
        return value.is(Variant::Kind::Text) && value.text().find(u'=') != Text::npos;
    });
}

// A text the command made twice (a block sent and then shown) is built once.
void KeepFirstOfEach(std::vector<Text>& texts) {
    std::vector<Text> distinct;
    for (Text& text : texts) {
        if (std::find(distinct.begin(), distinct.end(), text) == distinct.end()) {
            distinct.push_back(std::move(text));
        }
    }
    texts = std::move(distinct);
}

}  // namespace

CommandSurvey SurveyCommands() {
    CommandSurvey survey;
    for (const FormDescription& form : AllForms()) {
        for (const Control& control : form.controls) {
            if (control.kind != ControlKind::CommandButton || !control.click) {
                continue;
            }
            Observed observed;
            QuietConsole quiet({}, &observed);
            try {
                quiet.Click(form.name, control.name)(quiet.console());
            } catch (const std::exception&) {
                continue;  // needs something the quiet console lacks, a file say
            }
            const bool fixedBlock = SendsBlock(observed) && observed.boxes == 0 && observed.windows == 0;
            KeepFirstOfEach(observed.texts);
            SurveyedCommand command{form.name, control.name, std::move(observed.texts),
                                    std::move(observed.assignments)};
            if (form.name == kConsoleForm && control.name == "PreLoadMSGs") {
                survey.preloadedMessages = std::move(command);
            } else if (form.name == kOtherDevicesForm && control.name == "SETPRICEBUTTON") {
                survey.priceSet = std::move(command);
            } else if (fixedBlock) {
                survey.fixedBlocks.push_back(std::move(command));
            }
        }
    }
    return survey;
}

AppendPlan::AppendPlan(std::vector<Text> texts)
    : texts_(std::move(texts)) {
    for (const Text& text : texts_) {
        std::vector<TextView> lines;
        const TextView whole = text;
        std::size_t start = 0;
        while (start < whole.size()) {
            const std::size_t lf = whole.find(kLf, start);
            const std::size_t end = lf == TextView::npos ? whole.size() : lf + 1;
            lines.push_back(whole.substr(start, end - start));
            start = end;
        }
        lines_.push_back(std::move(lines));
    }
}

Text AppendPlan::Build(std::size_t index) const {
    Text text;
    for (const TextView line : lines_[index]) {
        text.append(line);
    }
    return text;
}

}  // namespace vantrel::bench
