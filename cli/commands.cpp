#include "cli/commands.h"

static const OptionInfo renderOptions[] = {
    {"--size", "WxH", "client size in pixels, 1 to 8192 each; without it the settings' x2 and y2",
     "zrka_cli render --size 1920x1080 run.bmp run.zrk"},
    {"--frames", "N", "passes of the main loop before the picture is saved, 1 and up; without it 200, after which the view rests",
     "zrka_cli render --frames 30 run.bmp run.zrk"},
    {"--keys", "KEYS", "characters typed at the start, one per pass", "zrka_cli render --keys VB run.bmp run.zrk"},
};

static std::string DumpDetails() {
    return "Per slot N in use OUTDIR gets samplesN.csv, one line per sample with the stored counts as integers, and slotN.txt,\n"
           "one line `name value value ...` per value. OUTDIR is made when it is missing.";
}

static std::string RenderDetails() { return "Time is virtual: no pass waits."; }

static const Command commands[] = {
    {"dump", "OUTDIR FILE [FILE [FILE]]", "loads the files into File 1, 2, 3 and writes what the store then holds",
     DumpDetails, "zrka_cli dump out monday.zrk tuesday.zrk", {}, 2, 4, RunDump},
    {"render", "OUT.bmp [--size WxH] [--frames N] [--keys KEYS] FILE [FILE [FILE]]",
     "runs the frame loop on the files and saves the last frame as a bitmap",
     RenderDetails, "zrka_cli render run.bmp run.zrk", renderOptions, 2, 4, RunRender},
    {"play", "SCRIPT [FILE [FILE [FILE]]]", "runs the frame loop on scripted input",
     PlayDetails, "zrka_cli play steps.txt run.zrk", {}, 1, 4, RunPlay},
};

int RunCommandLine(std::span<const std::string> words) {
    Invocation invocation;
    const int status = ParseArguments(words, commands, invocation);
    return status >= 0 ? status : invocation.command->run(invocation);
}
