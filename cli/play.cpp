// The command `play`: the program driven by a script.
#include "cli/play.h"

#include <algorithm>
#include <iterator>

#include "app/frame_loop.h"
#include "app/toolbar.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/session.h"
#include "cli/values.h"
#include "draw/recorder.h"
#include "platform/files.h"
#include "run_data/channels.h"

struct Instruction {
    const char* name;
    const char* form;    // what stands behind the name
    const char* effect;  // for the help
    bool (*read)(std::string_view rest, Step& step);  // false: not of that form
    int (*run)(const Invocation& invocation, const Step& step);
};

// --- reading -----------------------------------------------------------------------------------------------------------

constexpr int coordinateLimit = 32767;

// Cuts the next word off `rest`, and the blanks behind it.
static std::string_view TakeWord(std::string_view& rest) {
    const size_t end = std::min(rest.find_first_of(" \t"), rest.size());
    const std::string_view word = rest.substr(0, end);
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t", end), rest.size()));
    return word;
}

static bool ReadNothing(std::string_view rest, Step&) { return rest.empty(); }

template <int low, int high>
static bool ReadOne(std::string_view rest, Step& step) {
    return ReadNumber(rest, low, high, step.number[0]);
}

template <int low, int high>
static bool ReadTwo(std::string_view rest, Step& step) {
    return ReadNumber(TakeWord(rest), low, high, step.number[0]) && ReadNumber(rest, low, high, step.number[1]);
}

static bool ReadPath(std::string_view rest, Step& step) {
    step.text = rest.empty() ? "" : FullPath(std::string(rest));
    return !rest.empty();
}

// A word of a list becomes its number.
template <auto& words>
static bool ReadChoice(std::string_view rest, Step& step) {
    const auto found = std::find(std::begin(words), std::end(words), rest);
    step.number[0] = static_cast<int>(found - std::begin(words));
    return found != std::end(words);
}

static constexpr std::string_view foregroundWords[] = {"main", "toolbar", "other"};
static constexpr Foreground foregroundWindows[] = {Foreground::mainWindow, Foreground::toolbar, Foreground::other};
static constexpr std::string_view powerWords[] = {"suspend-query", "suspend", "resume"};
static constexpr PowerEvent powerEvents[] = {PowerEvent::suspendQuery, PowerEvent::suspend, PowerEvent::resume};

static bool ReadHold(std::string_view rest, Step& step) {
    bool shift = false, ctrl = false;
    if (!rest.empty() && !ReadHeldKeys(rest, shift, ctrl)) return false;
    step.number[0] = shift;
    step.number[1] = ctrl;
    return true;
}

struct NamedKey {
    std::string_view name;
    int character;
};
static constexpr NamedKey namedKeys[] = {
    {"Tab", 9}, {"Esc", 27}, {"Right", 28}, {"Left", 29}, {"Up", 30}, {"Down", 31}, {"Space", 32},
};

static bool ReadKey(std::string_view rest, Step& step) {
    for (const NamedKey& key : namedKeys)
        if (rest == key.name) step.number[0] = key.character;
    if (rest.size() == 1 && rest[0] > ' ' && rest[0] <= '~') step.number[0] = rest[0];
    return step.number[0] != 0;
}

static bool ReadAnswer(std::string_view rest, Step& step) {
    step.number[0] = static_cast<int>(rest == "cancel" ? Answer::cancel : rest == "ok" ? Answer::ok : Answer::path);
    return rest == "cancel" || rest == "ok" || ReadPath(rest, step);
}

static bool ReadLoad(std::string_view rest, Step& step) {
    return ReadNumber(TakeWord(rest), 1, fileSlots, step.number[0]) && ReadPath(rest, step);
}

static bool ReadCommand(std::string_view rest, Step& step) {
    const bool known = ReadNumber(TakeWord(rest), 0, 65535, step.number[0]) && IsToolButton(step.number[0]);
    step.number[1] = rest == "checked";
    return known && (rest.empty() || rest == "checked");
}

static bool ReadOps(std::string_view rest, Step& step) { return rest == "off" || ReadPath(rest, step); }

static bool ReadState(std::string_view rest, Step& step) {
    step.text = rest;
    while (!rest.empty())
        if (!FindValue(TakeWord(rest))) return false;
    return !step.text.empty();
}

// --- running -----------------------------------------------------------------------------------------------------------

// Operations recorded since the last piece was written.
static std::string operations;
static FileReplacement operationsFile;

static int WriteOperations() {
    const int failed = WritePiece(operationsFile, operations.data(), operations.size());
    operations.clear();
    return failed ? Fail("cannot write %s", operationsFile.path.c_str()) : exitDone;
}

static int StopRecording() {
    if (!RecordingOperations()) return exitDone;
    RecordOperations(nullptr);
    if (int status = WriteOperations(); status != exitDone) return status;
    const std::string path = operationsFile.path;
    return CommitReplacement(operationsFile) == 0 ? exitDone : Fail("cannot write %s", path.c_str());
}

static int RunOps(const Invocation&, const Step& step) {
    if (int status = StopRecording(); status != exitDone || step.text.empty()) return status;
    operationsFile = {};
    operations.clear();
    if (BeginReplacement(operationsFile, step.text.c_str()) != 0) return Fail("cannot write %s", step.text.c_str());
    RecordOperations(&operations);
    return exitDone;
}

static int RunPass(const Invocation&, const Step& step) {
    if (!RecordingOperations()) RunPasses(step.number[0]);
    if (!RecordingOperations()) return exitDone;
    for (int pass = 0; pass < step.number[0] && LoopRuns(); pass++) {
        RunPasses(1);
        if (int status = WriteOperations(); status != exitDone) return status;
    }
    return exitDone;
}

static int RunState(const Invocation&, const Step& step) {
    std::string lines;
    for (std::string_view rest = step.text; !rest.empty();) AppendValueLine(lines, *FindValue(TakeWord(rest)));
    Print(lines);
    return exitDone;
}

static int RunBoxes(const Invocation&, const Step&) {
    for (const Shown& entry : TakeShown()) Print(ShownLine(entry) + "\n");
    return exitDone;
}

// A step that cannot fail.
template <auto act>
static int Run(const Invocation&, const Step& step) {
    act(step);
    return exitDone;
}

static void SetSize(const Step& step) { ScriptClientSize(step.number[0], step.number[1]); }
static void MoveMouse(const Step& step) { ScriptMouse(step.number[0], step.number[1]); }
static void PressButtons(const Step& step) { ScriptButtons(static_cast<uint32_t>(step.number[0])); }
static void TurnWheel(const Step& step) { ScriptWheel(step.number[0]); }
static void TurnHWheel(const Step& step) { ScriptHWheel(step.number[0]); }
static void HoldKeys(const Step& step) { ScriptHold(step.number[0] != 0, step.number[1] != 0); }
static void TypeKey(const Step& step) { ScriptChar(step.number[0]); }
static void PressToolButton(const Step& step) { ScriptToolPress(step.number[0], step.number[1] != 0); }
static void GiveForeground(const Step& step) { ScriptForeground(foregroundWindows[step.number[0]]); }
static void SendPower(const Step& step) { PowerBroadcast(powerEvents[step.number[0]]); }
static void ChangeDisplay(const Step&) { DisplayChanged(); }
static void CloseWindow(const Step&) { ScriptClose(); }
static void PrepareAnswer(const Step& step) { QueueAnswer(static_cast<Answer>(step.number[0]), step.text); }

// A log that does not load is the script's affair: it asks with `boxes`.
static int RunLoad(const Invocation& invocation, const Step& step) {
    LoadLog(invocation, step.text, step.number[0] - 1);
    return exitDone;
}

static int RunShot(const Invocation&, const Step& step) { return SavePicture(step.text); }

static constexpr Instruction instructions[] = {
    {"size", "W H", "client size, 0 to 8192 each", ReadTwo<0, largestClient>, Run<SetSize>},
    {"mouse", "X Y", "mouse position in the client area", ReadTwo<-coordinateLimit, coordinateLimit>, Run<MoveMouse>},
    {"buttons", "MASK", "mouse buttons down: 1 left, 2 right, 4 middle, 8 and 16 the side buttons", ReadOne<0, 31>, Run<PressButtons>},
    {"wheel", "N", "wheel notches, upward positive", ReadOne<-coordinateLimit, coordinateLimit>, Run<TurnWheel>},
    {"hwheel", "N", "horizontal wheel delta, 120 a notch", ReadOne<-coordinateLimit, coordinateLimit>, Run<TurnHWheel>},
    {"hold", "[shift,ctrl]", "keys held down; none without", ReadHold, Run<HoldKeys>},
    {"key", "K", "one character typed: a letter, digit or sign, or Tab Esc Right Left Up Down Space", ReadKey, Run<TypeKey>},
    {"command", "ID [checked]", "a tool bar button pressed; checked is the state of a check button after it", ReadCommand, Run<PressToolButton>},
    {"foreground", "main|toolbar|other", "which window has the foreground", ReadChoice<foregroundWords>, Run<GiveForeground>},
    {"power", "suspend-query|suspend|resume", "a power message", ReadChoice<powerWords>, Run<SendPower>},
    {"display-change", "", "the message that the display changed", ReadNothing, Run<ChangeDisplay>},
    {"close", "", "the close message of the main window", ReadNothing, Run<CloseWindow>},
    {"answer", "PATH|cancel|ok", "answer to the next file or confirmation dialog", ReadAnswer, Run<PrepareAnswer>},
    {"load", "N FILE", "a log into File N, 1 to 3", ReadLoad, RunLoad},
    {"pass", "N", "N passes of the main loop; a wait advances the clock at once", ReadOne<0, mostPasses>, RunPass},
    {"state", "NAME...", "prints each global of that name as `name value ...`", ReadState, RunState},
    {"ops", "FILE|off", "records every drawing operation of the following passes", ReadOps, RunOps},
    {"shot", "FILE.bmp", "saves the client area of the last drawn frame", ReadPath, RunShot},
    {"boxes", "", "prints the message boxes and dialogs opened since the last `boxes`", ReadNothing, RunBoxes},
};

std::string PlayDetails() {
    std::string details = "SCRIPT has one instruction a line; `#` at the start of a word begins a comment:\n";
    for (const Instruction& instruction : instructions)
        details += "  " + std::string(instruction.name) + " " + instruction.form + "\n      " + instruction.effect + "\n";
    return details;
}

// --- the script as a whole ---------------------------------------------------------------------------------------------

// The line without its comment and the blanks around.
static std::string_view Trim(std::string_view line) {
    for (size_t at = line.find('#'); at != std::string_view::npos; at = line.find('#', at + 1))
        if (at == 0 || line[at - 1] == ' ' || line[at - 1] == '\t') line = line.substr(0, at);
    const size_t start = std::min(line.find_first_not_of(" \t"), line.size());
    return line.substr(start, line.find_last_not_of(" \t\r") + 1 - start);
}

static int ReadStep(const std::string& name, std::string_view rest, Step& step) {
    const std::string word(TakeWord(rest));
    for (const Instruction& instruction : instructions)
        if (word == instruction.name) step.instruction = &instruction;
    if (!step.instruction)
        return Refuse("%s line %d: unknown instruction %s; see zrka_cli play --help", name.c_str(), step.line, word.c_str());
    if (!step.instruction->read(rest, step))
        return Refuse("%s line %d: %s %s; accepted is %s %s", name.c_str(), step.line, word.c_str(), std::string(rest).c_str(),
                      word.c_str(), step.instruction->form);
    return exitDone;
}

int ReadScript(const std::string& name, std::string_view text, std::vector<Step>& steps) {
    for (int line = 1; !text.empty(); line++) {
        const size_t end = std::min(text.find('\n'), text.size());
        const std::string_view rest = Trim(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (rest.empty()) continue;
        Step step;
        step.line = line;
        if (int status = ReadStep(name, rest, step); status != exitDone) return status;
        steps.push_back(step);
    }
    return exitDone;
}

int RunScript(const Invocation& invocation, const std::vector<Step>& steps) {
    int status = exitDone;
    for (const Step& step : steps)
        if (status == exitDone) status = step.instruction->run(invocation, step);
    return std::max(status, StopRecording());
}

// The largest client size of the script: the screen must have room for it.
static void LargestSize(const std::vector<Step>& steps, int& width, int& height) {
    for (const Step& step : steps)
        if (step.instruction->run == Run<SetSize>) {
            width = std::max(width, step.number[0]);
            height = std::max(height, step.number[1]);
        }
}

int RunPlay(const Invocation& invocation) {
    const std::vector<std::string> paths = OperandPaths(invocation);
    FileBytes script;
    if (ReadWholeFile(paths[0].c_str(), 1 << 26, 0, script) != 0)
        return Refuse("cannot read %s; play takes a script and up to three logs", invocation.operands[0].c_str());
    std::vector<Step> steps;
    const std::string_view text(reinterpret_cast<const char*>(script.data.get()), script.length);
    if (int status = ReadScript(invocation.operands[0], text, steps); status != exitDone) return status;

    int width = 0, height = 0;
    LargestSize(steps, width, height);
    if (int status = BeginSession(invocation); status != exitDone) return status;
    if (int status = OpenSessionWindow(width, height); status != exitDone) return status;
    const int loaded = LoadLogs(invocation, std::span(paths).subspan(1));
    const int played = RunScript(invocation, steps);
    EndSession(invocation);
    return std::max(loaded, played);
}
