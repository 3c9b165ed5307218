// The command `distribution`: the shares of the time by bands of values, as the window's two boxes show them.
#include "analysis/distribution.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/session.h"

constexpr int largestNumber = 1000000;  // the program limits it further

static constexpr const char* lapNames[] = {"all", "checked"};

struct DistributionRequest {
    int channel = distNe, laps = 0;
    std::optional<int> numbers[distFields];
};

// The index of an option's text in a list of names; the first one when it is not given.
static int ReadName(const Invocation& invocation, const char* option, const char* const* names, int count, const char* accepted, int& index) {
    const std::string* text = GivenValue(invocation, option);
    if (!text) return exitDone;
    index = static_cast<int>(std::find(names, names + count, *text) - names);
    return index < count ? exitDone : Refuse("%s %s: accepted are %s", option, text->c_str(), accepted);
}

static int ReadRequest(const Invocation& invocation, DistributionRequest& request) {
    static constexpr const char* numberOptions[distFields] = {"--min", "--max", "--step"};
    if (ReadName(invocation, "--channel", distChannelNames, distChannels, "Ne, Th, FrSUS and RrSUS", request.channel) != exitDone ||
        ReadName(invocation, "--laps", lapNames, std::size(lapNames), "all and checked", request.laps) != exitDone)
        return exitUnusable;
    for (int field = 0; field < distFields; field++) {
        const std::string* text = GivenValue(invocation, numberOptions[field]);
        int number = 0;
        if (text && !ReadNumber(*text, -largestNumber, largestNumber, number))
            return Refuse("%s %s: a whole number is wanted", numberOptions[field], text->c_str());
        if (text) request.numbers[field] = number;
    }
    return exitDone;
}

int RunDistribution(const Invocation& invocation) {
    DistributionRequest request;
    if (const int status = ReadRequest(invocation, request); status != exitDone) return status;
    const std::vector<std::string> paths = OperandPaths(invocation);
    if (const int status = BeginSession(invocation); status != exitDone) return status;
    const int loaded = LoadLogs(invocation, paths);
    OpenDistribution();
    distChannel = request.channel;
    distLaps = request.laps;
    const int start[distFields] = {distMin[distChannel], distMax[distChannel], distStep[distChannel]};
    for (int field = 0; field < distFields; field++) distBands[field] = request.numbers[field].value_or(start[field]);
    AnalyzeBands();
    for (const std::string& text : distTexts) Print(text);
    EndSession(invocation);
    return loaded;
}
