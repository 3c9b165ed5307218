#include "run_data/native_block.h"

#include <algorithm>
#include <cstring>

#include "run_data/run_store.h"
#include "run_data/stream_copy.h"

// Calls visit(cells, array) for every column that is stored.
template <class Block, class Visit>
static void ForEachStoredColumn(Block& block, Visit visit) {
    int s = block.slot;
    visit(block.ne, Ne[s]);
    visit(block.th, TH[s]);
    visit(block.vfw, VFW[s]);
    visit(block.vrw, VRW[s]);
    visit(block.fsus, FSUS[s]);
    visit(block.rsus, RSUS[s]);
    visit(block.inputs[0], LAF1[s]);
    visit(block.inputs[1], LAF2[s]);
    visit(block.inputs[2], AUX1[s]);
    visit(block.inputs[3], AUX2[s]);
    visit(block.vb, VB[s]);
    visit(block.lapDistance, lapDistance[s]);
    visit(block.distFront, distFront[s]);
    visit(block.distRear, distRear[s]);
    visit(block.flag, sampleFlag[s]);
}

int CellOf(const SampleBlock& block, int sample) { return std::clamp(sample - block.start + lead, lead, blockCells); }

void StartBlocks(SampleBlock& block, int slot) {
    std::memset(&block, 0, sizeof block);
    block.slot = slot;
    block.first = lead + 1;
    block.end = blockCells;
}

void NextBlock(SampleBlock& block) {
    ForEachStoredColumn(block, [](auto& cells, auto&) { cells[lead - 1] = cells[blockCells - 1]; });
    for (uint16_t* readings : block.fields) readings[lead - 1] = readings[blockCells - 1];
    block.start += blockSize;
    block.first = lead;
}

static void ClearCells(SampleBlock& block, int from, int to) {
    std::fill(block.words[vfwWord] + from, block.words[vfwWord] + to, 0);
    std::fill(block.throttleRaw + from, block.throttleRaw + to, throttleNotSeen);
    ForEachStoredColumn(block, [&](auto& cells, auto&) { std::fill(cells + from, cells + to, 0); });
}

void ClearUnusedCells(SampleBlock& block) {
    if (IsFullBlock(block)) return;
    ClearCells(block, lead, block.first);
    ClearCells(block, block.end, blockCells);
}

static bool IsDelivered(const SampleBlock& block, const void* cells) {
    for (int input = 0; input < analogInputs; input++)
        if (cells == block.inputs[input]) return block.delivered[input];
    return false;
}

void DeliverBlock(const SampleBlock& block) {
    ForEachStoredColumn(block, [&](const auto& cells, auto& array) {
        if (IsDelivered(block, cells)) return;
        int room = static_cast<int>(array.size()) - block.start;
        if (room > 0) StreamCopy(array.data() + block.start, cells + lead, std::min(room, blockSize) * sizeof cells[0]);
    });
}

static void ClearArraysFrom(int slot, int from) {
    ForEachSampleArray(slot, [&](auto& array, bool) {
        if (from < static_cast<int>(array.size())) std::fill(array.begin() + from, array.end(), 0);
    });
}

void EndBlocks(SampleBlock& block, bool keepVoltage) {
    int behind = block.end;
    for (auto* cells : {block.lapDistance, block.distFront, block.distRear})
        std::fill(cells + behind + 1, cells + blockCells, 0);
    if (keepVoltage) block.vb[behind] = block.vb[behind - 1];
    ClearArraysFrom(block.slot, SampleAt(block, behind));
    DeliverBlock(block);
    FinishStream();
}
