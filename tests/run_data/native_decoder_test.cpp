// The decoder against a plain one, on random bytes: every version, setting and kind of sensor, at all lengths around a block.
#include <gtest/gtest.h>

#include <random>

#include "app/frame_loop.h"
#include "run_data/native_block.h"
#include "run_data/native_frames.h"
#include "run_data/run_store.h"
#include "run_data/spread_frames.h"
#include "run_data/transpose_frames.h"
#include "settings/settings.h"
#include "tests/run_data/native_reference.h"

namespace {

constexpr int versions[] = {0, 1, 2, 3, 4, 32};

class NativeDecoder : public testing::Test {
  protected:
    std::mt19937 random{20240611};

    void SetUp() override {
        LoadDefaults();
        SmoothingSTD = 0;  // the samples stay as decoded
    }
    void TearDown() override { LoadDefaults(); }

    int Below(int limit) { return static_cast<int>(random() % limit); }
    uint8_t Byte() { return static_cast<uint8_t>(random()); }

    void FillHeader(LogBytes& log, int version) {
        for (int at = 1; at < 320; at++) log[at] = Byte();
        log[typeMarkAt] = '3';
        log[versionAt] = static_cast<uint8_t>(version);
        log[neDividerAt] = static_cast<uint8_t>(Below(6) == 0 ? Byte() : Below(4));
        log[marksPerLapAt] = static_cast<uint8_t>(Below(5));
        log[fsusTypeAt] = static_cast<uint8_t>(Below(3));
        log[rsusTypeAt] = static_cast<uint8_t>(Below(3));
        for (int input = 0; input < analogInputs; input++) log[analogTypeAt + input] = static_cast<uint8_t>(Below(5));
        if (Below(8) == 0) log[tpsOpenAt] = log[tpsClosedAt];
    }
    // Random frames; with `battery` the voltage of fixed frames is mostly good.
    LogBytes RandomLog(int version, int bytes, bool battery) {
        bool extended = version == 3 || version == 4;
        LogBytes log(extended ? extendedHeaderSize : headerSize, 0);
        FillHeader(log, version);
        size_t frames = log.size();
        log.resize(frames + bytes);
        for (size_t at = frames; at < log.size(); at++) log[at] = Byte();
        if (battery && !extended)
            for (size_t at = frames + 13; at < log.size(); at += frameSize)
                if (Below(50) != 0) log[at] = static_cast<uint8_t>(120 + Below(100));
        if (Below(3) != 0 && !extended)  // few marks
            for (size_t at = frames + 2; at < log.size(); at += frameSize)
                if (Below(100) != 0) log[at] &= 0x7F;
        return log;
    }
    // Random settings, for the program and for the plain decoder.
    ReferenceOptions RandomOptions() {
        VBerrexp = Below(2);
        Debug = Below(2);
        CoursePosSource = Below(2);
        MarksPerLap[0] = 1 + Below(3);
        return {VBerrexp != 0, Debug != 0, CoursePosSource == 1, MarksPerLap[0]};
    }
};

template <class Array>
void ExpectColumn(const char* name, const Array& array, const std::vector<int64_t>& expected, int samples) {
    SCOPED_TRACE(name);
    ASSERT_GE(array.size(), static_cast<size_t>(samples + 1));
    for (int i = 0; i <= samples; i++) ASSERT_EQ(int64_t{array[i]}, expected[i]) << "sample " << i << " of " << samples;
    for (size_t i = samples + 1; i < array.size(); i++) ASSERT_EQ(array[i], 0) << "behind the log, " << i;
}

void ExpectSame(const ReferenceLog& r) {
    ASSERT_EQ(sampleCount[0], r.samples);
    ASSERT_EQ(lapCount[0], r.laps);
    ExpectColumn("Ne", Ne[0], r.columns[rNe], r.samples);
    ExpectColumn("TH", TH[0], r.columns[rTH], r.samples);
    ExpectColumn("VFW", VFW[0], r.columns[rVFW], r.samples);
    ExpectColumn("VRW", VRW[0], r.columns[rVRW], r.samples);
    ExpectColumn("FSUS", FSUS[0], r.columns[rFSUS], r.samples);
    ExpectColumn("RSUS", RSUS[0], r.columns[rRSUS], r.samples);
    ExpectColumn("LAF1", LAF1[0], r.columns[rLAF1], r.samples);
    ExpectColumn("LAF2", LAF2[0], r.columns[rLAF2], r.samples);
    ExpectColumn("VB", VB[0], r.columns[rVB], r.samples);
    ExpectColumn("AUX1", AUX1[0], r.columns[rAUX1], r.samples);
    ExpectColumn("AUX2", AUX2[0], r.columns[rAUX2], r.samples);
    ExpectColumn("lapDistance", lapDistance[0], r.columns[rLap], r.samples);
    ExpectColumn("distFront", distFront[0], r.columns[rFront], r.samples);
    ExpectColumn("distRear", distRear[0], r.columns[rRear], r.samples);
    ExpectColumn("sampleFlag", sampleFlag[0], r.columns[rFlag], r.samples);
    for (int k = 0; k < lapTableSize; k++) {
        ASSERT_EQ(lapStart[0][k], r.lapStart[k]) << "mark " << k;
        ASSERT_EQ(lapLength[0][k], r.lapLength[k]) << "lap " << k;
    }
    EXPECT_EQ(tpsMinSeen[0], r.tpsMin);
    EXPECT_EQ(tpsMaxSeen[0], r.tpsMax);
    EXPECT_EQ(fsusMaxSeen[0], r.fsusMax);
    EXPECT_EQ(rsusMaxSeen[0], r.rsusMax);
    EXPECT_EQ(nativeSizeEstimate, r.sizeEstimate);
}

TEST_F(NativeDecoder, AgreesWithThePlainOneOnRandomBytes) {
    for (int version : versions)
        for (int round = 0; round < 60; round++) {
            SCOPED_TRACE("version " + std::to_string(version) + " round " + std::to_string(round));
            LogBytes log = RandomLog(version, Below(round < 30 ? 2000 : 60000), Below(2) != 0);
            ReferenceOptions options = RandomOptions();
            ReadIntoSlot(0, log);
            ExpectSame(DecodeReference(log, options));
            if (HasFatalFailure()) return;
        }
}

TEST_F(NativeDecoder, AgreesWithThePlainOneAtEveryLengthAroundABlock) {
    for (int version : versions)
        for (int frames : {0, 1, 2, 49, 50, 199, 200, 201, 254, 255, 256, 257, 510, 511, 512, 513, 767, 768}) {
            SCOPED_TRACE("version " + std::to_string(version) + " frames " + std::to_string(frames));
            LogBytes log = RandomLog(version, frames * frameSize, true);
            ReferenceOptions options = RandomOptions();
            ReadIntoSlot(0, log);
            ExpectSame(DecodeReference(log, options));
            if (HasFatalFailure()) return;
        }
}

TEST_F(NativeDecoder, AgreesWithThePlainOneOnCompleteChangeMaskFrames) {
    // Random readings in frames as the unit writes them, so that fields come and go while the battery is good.
    for (int version : {3, 4})
        for (int round = 0; round < 20; round++) {
            SCOPED_TRACE("version " + std::to_string(version) + " round " + std::to_string(round));
            LogBytes log(extendedHeaderSize, 0);
            FillHeader(log, version);
            int full = version == 4 ? 65536 : 256, frames = 100 + Below(1500);
            auto some = [&](int value) { return Below(3) == 0 ? std::optional<int>(value) : std::nullopt; };
            for (int i = 0; i < frames; i++) {
                MaskFrame f;
                f.ne = some(Below(65536));
                f.vfw = some(Below(40000));
                f.vrw = some(Below(65536));
                f.neDelta = Byte(), f.vfwDelta = Byte(), f.vrwDelta = Byte();
                f.th = some(Below(full)), f.fsus = some(Below(full)), f.rsus = some(Below(full));
                f.laf1 = some(Below(full)), f.laf2 = some(Below(full)), f.aux1 = some(Below(full)), f.aux2 = some(Below(full));
                f.vb = some(full / 2 + Below(full / 4) - (Below(100) == 0 ? full / 4 : 0));
                f.flag = some(Byte());
                f.unused1 = Below(9) == 0, f.unused2 = Below(9) == 0, f.unused4 = Below(9) == 0;
                AddFrame(log, f);
            }
            ReferenceOptions options = RandomOptions();
            ReadIntoSlot(0, log);
            EXPECT_EQ(sampleCount[0], frames + 1);
            ExpectSame(DecodeReference(log, options));
            if (HasFatalFailure()) return;
        }
}

TEST_F(NativeDecoder, DividesEveryEngineCountExactly) {
    LogBytes log = QuietLog(2, 65536);
    for (int raw = 0; raw < 65536; raw++) {
        FrameOf(log, raw + 1)[0] = static_cast<uint8_t>(raw >> 8);
        FrameOf(log, raw + 1)[1] = static_cast<uint8_t>(raw);
    }
    for (int divider : {0, 1, 2, 3, 7, 127, 128, 251, 253, 255}) {
        SCOPED_TRACE(divider);
        log[neDividerAt] = static_cast<uint8_t>(divider);
        ReadIntoSlot(0, log);
        for (int raw = 0; raw < 65536; raw++) ASSERT_EQ(Ne[0][raw + 1], divider ? raw / divider : (raw * 2 & 0xFFFF)) << raw;
    }
}

TEST_F(NativeDecoder, TurnsFramesIntoColumnsLikeThePlainLoop) {
    std::vector<uint8_t> frames(2 * blockSize * frameSize + 1);
    for (uint8_t& byte : frames) byte = Byte();
    alignas(16) static uint16_t fast[frameWords][blockCells], plain[frameWords][blockCells];
    for (int offset : {0, 1}) {
        TransposeFrames(frames.data() + offset, fast);
        TransposeFramesPlain(frames.data() + offset, plain);
        for (int k = 0; k < frameWords; k++)
            for (int c = lead; c < blockCells; c++) ASSERT_EQ(fast[k][c], plain[k][c]) << "word " << k << " cell " << c;
    }
}

void ExpectSameCells(const SampleBlock& a, const SampleBlock& b) {
    for (int c = a.first; c < a.end; c++) {
        for (int k = 0; k <= maskWord; k++) ASSERT_EQ(a.words[k][c], b.words[k][c]) << "word " << k << " cell " << c;
        for (int k = 0; k < fieldTotal; k++) ASSERT_EQ(a.fields[k][c], b.fields[k][c]) << "field " << k << " cell " << c;
        ASSERT_EQ(a.flag[c], b.flag[c]) << "cell " << c;
    }
}

TEST_F(NativeDecoder, SpreadsChangeMaskFramesLikeThePlainLoop) {
    static SampleBlock fast, plain;
    for (int version : {3, 4}) {
        FrameBefore before = {}, beforePlain = {};
        for (int round = 0; round < 40; round++) {
            SCOPED_TRACE("version " + std::to_string(version) + " round " + std::to_string(round));
            fast.first = plain.first = lead + (round == 0 ? 1 : 0);
            fast.end = plain.end = round % 4 == 3 ? fast.first + Below(blockSize - 1) : blockCells;
            std::vector<uint8_t> frames(blockSize * largestMaskFrame + 16), steps;
            for (uint8_t& byte : frames) byte = Byte();
            const uint8_t* at = frames.data();
            for (int c = fast.first; c < fast.end; c++) {
                steps.push_back(static_cast<uint8_t>(ChangeMaskFrameSize(at, version)));
                at += steps.back();
            }
            SpreadFrames(frames.data(), steps.data(), version, before, fast);
            SpreadFramesPlain(frames.data(), steps.data(), version, beforePlain, plain);
            ExpectSameCells(fast, plain);
            if (HasFatalFailure()) return;
        }
    }
}

// The size of each frame of a log, and with it the place of the next one, by a walk from frame to frame.
std::vector<uint8_t> StepsOf(const LogBytes& log, int length, int version) {
    std::vector<uint8_t> steps;
    for (int at = extendedHeaderSize; at <= length; at += steps.back())
        steps.push_back(static_cast<uint8_t>(ChangeMaskFrameSize(log.data() + at, version)));
    return steps;
}
void ExpectSameWalk(LogBytes log, int version) {
    const int length = static_cast<int>(log.size());
    log.resize(length + 1024, 0);
    FrameSteps steps;
    const std::vector<uint8_t> expected = StepsOf(log, length, version);
    ASSERT_EQ(WalkChangeMaskFrames(log.data(), length, version, 21400000, steps), static_cast<int>(expected.size()));
    for (size_t i = 0; i < expected.size(); i++) ASSERT_EQ(steps.bytes[i], expected[i]) << "frame " << i << " of " << length << " bytes";
    const int some = static_cast<int>(expected.size() / 2);
    ASSERT_EQ(WalkChangeMaskFrames(log.data(), length, version, some, steps), some);
    for (int i = 0; i < some; i++) ASSERT_EQ(steps.bytes[i], expected[i]) << "frame " << i;
}

TEST_F(NativeDecoder, FindsEveryFrameOfALogThatIsWalkedInParts) {
    for (int version : {3, 4})
        for (int bytes : {0, 4, 5, 16383, 16384, 16385, 65535, 65536, 65537, 200000, 1000003}) {
            LogBytes log(extendedHeaderSize, 0);
            for (int i = 0; i < bytes; i++) log.push_back(Byte());
            ExpectSameWalk(log, version);
            if (HasFatalFailure()) return;
        }
}

TEST_F(NativeDecoder, FindsEveryFrameWhenThePartsNeverComeIntoStep) {
    // Bytes of 0 are frames of five bytes from wherever a walk begins, so that most parts never meet the one before.
    for (int bytes = 100000; bytes < 100010; bytes++) ExpectSameWalk(LogBytes(extendedHeaderSize + bytes, 0), 3);
    // One bit in between brings them together late, or only some.
    for (int at : {20000, 49999, 74999, 75001, 99990}) {
        LogBytes log(extendedHeaderSize + 100001, 0);
        log[extendedHeaderSize + at] = 0x70;
        ExpectSameWalk(log, 4);
    }
}

}  // namespace
