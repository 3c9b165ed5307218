#include "cli/commands.h"

#include "cli/csv_answer.h"

static const OptionInfo renderOptions[] = {
    {"--size", "WxH", "client size in pixels, 1 to 8192 each; without it the settings' x2 and y2",
     "zrka_cli render --size 1920x1080 run.bmp run.zrk"},
    {"--frames", "N", "passes of the main loop before the picture is saved, 1 and up; without it 200, after which the view rests",
     "zrka_cli render --frames 30 run.bmp run.zrk"},
    {"--keys", "KEYS", "characters typed at the start, one per pass", "zrka_cli render --keys VB run.bmp run.zrk"},
};

static const OptionInfo dumpOptions[] = {
    {csvRowOption, "ROW=ITEM", "the item selected in a row of a CSV log's selection dialog, both from 0, repeatable; without it the preselection",
     "zrka_cli dump --csv-row 0=1 --csv-row 3=7 out run.csv"},
    {csvLapOption, "number|distance", "what the LAP column of a CSV log holds; without it what its title says",
     "zrka_cli dump --csv-lap distance out run.csv"},
};

static std::string DumpDetails() {
    return "Per slot N in use OUTDIR gets samplesN.csv, one line per sample with the stored counts as integers, and slotN.txt,\n"
           "one line `name value value ...` per value. OUTDIR is made when it is missing.\n"
           "For CSV logs the selection dialog is answered with its preselection, by the titles of \"csvlabel.ini\". Rows: 0 time base\n"
           "(items 0 to 5: 5, 10, 25, 50, 100, 300 ms; then the columns), 1 Ne, 2 TH, 3 VFW, 4 VRW, 5 FrSUS, 6 RrSUS, 7 LAF1, 8 LAF2,\n"
           "9 VB, 10 AUX1, 11 AUX2, 12 LAP (items: the columns, then none). An item that a list lacks leaves its row empty.";
}

static const OptionInfo lapsOptions[] = {
    {"--table", "page1|page2|sectors", "the eight lines of the \"Analysis tools\" table instead of numbers, best values with a trailing *",
     "zrka_cli laps --table page1 run.zrk"},
    {"--file", "N", "which of the files is told, 1 to 3; without it 1", "zrka_cli laps --file 2 monday.zrk tuesday.zrk"},
    {"--sort", "KEY", "0 by lap, 1 by lap time, 2 to 13 by the table's value columns from the left; without --table those of page1",
     "zrka_cli laps --sort 3 run.zrk"},
    {"--first", "ROW", "position of the table's first line, from 0; only with --table", "zrka_cli laps --table page2 --first 8 run.zrk"},
    {"--check", "ROW,ROW,...", "the rows that count for averages and best values; without it all but the out lap and the last one",
     "zrka_cli laps --check 1,2,5 run.zrk"},
};

static std::string LapsDetails() {
    return "Without --table: CSV, one line per lap and a last one for the averages. lapTime and sectorTime0 to sectorTime7 are in\n"
           "samples, 2147483647 for none; NAME_at is the sample at which NAME stood, on the line of the averages the mean of the\n"
           "channel's own values, of the slips x 100.";
}

static const OptionInfo exportOptions[] = {
    {"--rate", "200|100|50|10|1", "samples a second that are written; without it 200",
     "zrka_cli export --rate 10 run.csv run.zrk"},
    {"--columns", "COLUMN,COLUMN,...", "of Distance, Lap, Ne, TH, VFW, VRW, FrSUS, RrSUS, LAF1, LAF2, VB, AUX1, AUX2, SlipRatio,\n"
     "      FrSusSpeed, RrSusSpeed; without it the channels that the graphs show. The last three only come with ExpertMode 2",
     "zrka_cli --set ModeSetting.ExpertMode=2 export --columns Distance,Lap,Ne,SlipRatio run.csv run.zrk"},
    {"--laps", "ROW,ROW,...", "the checked rows of the lap table; without it all but the out lap and the last one",
     "zrka_cli export --laps 1,2,5 run.csv run.zrk"},
    {"--range", "FIRST-LAST", "the samples from FIRST to LAST instead of laps", "zrka_cli export --range 400-1200 run.csv run.zrk"},
};

static std::string ExportDetails() {
    return "The first column is always Time, in seconds from 0 over what is exported. OUT.csv is replaced when it is complete, or\n"
           "stays what it was. The window's messages are on standard error.";
}

static const OptionInfo distributionOptions[] = {
    {"--channel", "Ne|Th|FrSUS|RrSUS", "what is counted; without it Ne", "zrka_cli distribution --channel Th run.zrk"},
    {"--min", "N", "begin of the first band, rpm, % or mm; without it 6000 for Ne, else 0", "zrka_cli distribution --min 4000 run.zrk"},
    {"--max", "N", "the last band begins here at the latest; without it 16000, 100, 125 or 50",
     "zrka_cli distribution --channel FrSUS --max 80 run.zrk"},
    {"--step", "N", "width of a band; without it 500 for Ne, else 5", "zrka_cli distribution --step 250 run.zrk"},
    {"--laps", "all|checked", "all laps, or all but the out lap and the last one; without it all",
     "zrka_cli distribution --laps checked run.zrk"},
};

static std::string DistributionDetails() {
    return "The texts of the window's two boxes, File 1's and then File 2's: a header, with a lowest value above 0 a line for what\n"
           "lies below it, and a line per band with its share of the time in percent. Numbers are limited as in the window. Lines\n"
           "end with CR LF.";
}

static std::string RenderDetails() { return "Time is virtual: no pass waits."; }

static const Command commands[] = {
    {"dump", "OUTDIR FILE [FILE [FILE]]", "loads the files into File 1, 2, 3 and writes what the store then holds",
     DumpDetails, "zrka_cli dump out monday.zrk tuesday.zrk", dumpOptions, 2, 4, RunDump},
    {"render", "OUT.bmp [--size WxH] [--frames N] [--keys KEYS] FILE [FILE [FILE]]",
     "runs the frame loop on the files and saves the last frame as a bitmap",
     RenderDetails, "zrka_cli render run.bmp run.zrk", renderOptions, 2, 4, RunRender},
    {"laps", "[--table page1|page2|sectors] [--file N] [--sort KEY] [--first ROW] [--check ROW,ROW,...] FILE [FILE [FILE]]",
     "tells what each lap reached, and its sectors", LapsDetails, "zrka_cli laps run.zrk", lapsOptions, 1, 3, RunLaps},
    {"export", "OUT.csv [--rate 200|100|50|10|1] [--columns COLUMN,...] [--laps ROW,ROW,...|--range FIRST-LAST] FILE",
     "writes laps or a stretch of a log as a text table", ExportDetails, "zrka_cli export run.csv run.zrk", exportOptions, 2, 2, RunExport},
    {"distribution", "[--channel Ne|Th|FrSUS|RrSUS] [--min N] [--max N] [--step N] [--laps all|checked] FILE [FILE]",
     "tells what share of the time a channel spent in each band of values", DistributionDetails,
     "zrka_cli distribution --channel Th run.zrk", distributionOptions, 1, 2, RunDistribution},
    {"play", "SCRIPT [FILE [FILE [FILE]]]", "runs the frame loop on scripted input",
     PlayDetails, "zrka_cli play steps.txt run.zrk", {}, 1, 4, RunPlay},
};

int RunCommandLine(std::span<const std::string> words) {
    Invocation invocation;
    const int status = ParseArguments(words, commands, invocation);
    return status >= 0 ? status : invocation.command->run(invocation);
}
