#include "cli/csv_answer.h"

#include "cli/console.h"
#include "platform/headless/script.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_log.h"

namespace {
struct Choice { int row, item; };
}
static std::vector<Choice> choices;  // in the order of the command line
static int lapType = -1;             // 1 numbers, 0 distances, -1 as the dialog has it

static bool ReadChoice(std::string_view text, Choice& choice) {
    const size_t equals = text.find('=');
    return equals != std::string_view::npos && ReadNumber(text.substr(0, equals), 0, csvRows - 1, choice.row) &&
           ReadNumber(text.substr(equals + 1), -1, csvColumnLimit + fixedTimeBases - 1, choice.item);
}

int TakeCsvOptions(const Invocation& invocation) {
    choices.clear();
    lapType = -1;
    for (const Invocation::Given& given : invocation.options) {
        const std::string_view name = given.option->name;
        Choice choice;
        if (name == csvRowOption) {
            if (!ReadChoice(given.value, choice))
                return Refuse("--csv-row %s: accepted is ROW=ITEM, a row from 0 to 15 and the number of an item in its list, as in 0=1",
                              given.value.c_str());
            choices.push_back(choice);
        }
        if (name == csvLapOption) {
            if (given.value != "number" && given.value != "distance")
                return Refuse("--csv-lap %s: accepted are number and distance", given.value.c_str());
            lapType = given.value == "number";
        }
    }
    return exitDone;
}

void AnswerCsvDialog() {
    OpenCsvRows();
    for (const Choice& choice : choices) ChooseCsvItem(choice.row, choice.item);
    if (lapType >= 0) lapByNumber = lapType;
    const bool virtualBefore = ClockIsVirtual();
    UseVirtualClock(true);
    AcceptCsvImport({nullptr, nullptr});
    UseVirtualClock(virtualBefore);
}
