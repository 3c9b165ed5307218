// The command `dump`: what the store holds after the files were loaded, as text.
#include <charconv>
#include <filesystem>
#include <iterator>

#include "cli/commands.h"
#include "cli/console.h"
#include "cli/session.h"
#include "cli/values.h"
#include "platform/files.h"
#include "run_data/run_store.h"

// Columns of samplesN.csv behind `i`, in the order of ForEachSampleArray.
static constexpr char samplesHeader[] =
    "i,Ne,TH,VFW,VRW,FSUS,RSUS,LAF1,LAF2,VB,AUX1,AUX2,lapDistance,distFront,distRear,sampleFlag,VFSus,VRSus\n";
constexpr int sampleColumns  = 17;
constexpr size_t bufferSize  = 1 << 20;
constexpr size_t longestLine = (1 + sampleColumns) * 12;  // of 32 bit numbers with sign and comma

// One column: how its element is written, and how many there are.
struct SampleColumn {
    const void* samples;
    size_t count;
    char* (*write)(char* at, const void* samples, size_t i);
};

static char* WriteNumber(char* at, int64_t number) { return std::to_chars(at, at + 12, number).ptr; }

template <class T>
static char* WriteSample(char* at, const void* samples, size_t i) {
    return WriteNumber(at, static_cast<const T*>(samples)[i]);
}

static void CollectColumns(int slot, SampleColumn columns[sampleColumns]) {
    ForEachSampleArray(slot, [&columns](auto& array, bool) {
        *columns++ = {array.data(), array.size(), WriteSample<std::remove_reference_t<decltype(array[0])>>};
    });
}

static char* WriteSampleLine(char* at, const SampleColumn columns[sampleColumns], size_t i) {
    at = WriteNumber(at, static_cast<int64_t>(i));
    for (int column = 0; column < sampleColumns; column++) {
        *at++ = ',';
        // The arrays that are not checked after a resize may be shorter than the log.
        at = i < columns[column].count ? columns[column].write(at, columns[column].samples, i) : WriteNumber(at, 0);
    }
    *at++ = '\n';
    return at;
}

static int WriteSamples(int slot, const std::string& path) {
    SampleColumn columns[sampleColumns];
    CollectColumns(slot, columns);
    FileReplacement file;
    if (BeginReplacement(file, path.c_str()) != 0) return Fail("cannot write %s", path.c_str());
    std::vector<char> buffer(bufferSize);
    char* at = std::copy(std::begin(samplesHeader), std::end(samplesHeader) - 1, buffer.data());
    int failed = 0;
    for (size_t i = 0; i < static_cast<size_t>(sampleCount[slot]) && !failed; i++) {
        at = WriteSampleLine(at, columns, i);
        if (at > buffer.data() + bufferSize - longestLine) {
            failed = WritePiece(file, buffer.data(), at - buffer.data());
            at = buffer.data();
        }
    }
    if (!failed) failed = WritePiece(file, buffer.data(), at - buffer.data());
    if (failed) AbandonReplacement(file);
    if (failed || CommitReplacement(file) != 0) return Fail("cannot write %s", path.c_str());
    return exitDone;
}

static int WriteSlotText(int slot, const std::string& path) {
    std::string text;
    AppendSlotText(text, slot);
    return ReplaceFile(path.c_str(), text.data(), text.size()) == 0 ? exitDone : Fail("cannot write %s", path.c_str());
}

static int WriteSlots(const std::string& folder) {
    int status = exitDone;
    for (int slot = 0; slot < fileSlots && status == exitDone; slot++) {
        if (!slotInUse[slot]) continue;
        const std::string number = std::to_string(slot + 1);
        status = WriteSamples(slot, folder + "/samples" + number + ".csv");
        if (status == exitDone) status = WriteSlotText(slot, folder + "/slot" + number + ".txt");
    }
    return status;
}

int RunDump(const Invocation& invocation) {
    const std::vector<std::string> paths = OperandPaths(invocation);
    if (MakeFolder(paths[0]) != 0) return Fail("cannot make the folder %s", paths[0].c_str());
    if (int status = BeginSession(invocation); status != exitDone) return status;
    const int loaded = LoadLogs(invocation, std::span(paths).subspan(1));
    const int written = WriteSlots(paths[0]);
    EndSession(invocation);
    return std::max(loaded, written);
}
