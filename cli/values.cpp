#include "cli/values.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <type_traits>

#include "analysis/final_simulation.h"
#include "analysis/lap_order.h"
#include "analysis/lap_stats.h"
#include "analysis/lap_table.h"
#include "app/frame_loop.h"
#include "app/layout_cycle.h"
#include "app/toolbar.h"
#include "graph/color_scheme.h"
#include "graph/rest_panels.h"
#include "graph/value_readout.h"
#include "graph/view_state.h"
#include "platform/window.h"
#include "run_data/csv_columns.h"
#include "run_data/load_pipeline.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "run_data/setup_values.h"
#include "settings/settings.h"
#include "settings/settings_file.h"
#include "views/course_file.h"
#include "views/course_image.h"

void AppendQuoted(std::string& text, std::string_view bytes) {
    text += '"';
    for (const unsigned char byte : bytes) {
        char escaped[5];
        if (byte >= 0x20 && byte <= 0x7E && byte != '"' && byte != '\\') {
            text += static_cast<char>(byte);
        } else {
            snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            text += escaped;
        }
    }
    text += '"';
}

// One element, or all of an array in index order. An array of char is a text up to its first zero byte.
template <class T>
static void Append(std::string& line, const T& value) {
    if constexpr (std::is_array_v<T> && std::is_same_v<std::remove_cv_t<std::remove_extent_t<T>>, char>) {
        line += ' ';
        AppendQuoted(line, {value, strnlen(value, std::extent_v<T>)});
    } else if constexpr (std::is_array_v<T>) {
        for (const auto& element : value) Append(line, element);
    } else if constexpr (std::is_floating_point_v<T>) {
        char number[40];
        snprintf(number, sizeof number, " %.17g", static_cast<double>(value));
        line += number;
    } else {
        line += ' ';
        line += std::to_string(value);
    }
}

// --- how a row reaches its value ---------------------------------------------------------------------------------------

template <auto& global>
static void AppendElement(std::string& line, int slot) {
    Append(line, global[slot]);
}
template <auto& global>
static void AppendWhole(std::string& line, int) {
    Append(line, global);
}
template <auto& global, int row>
static void AppendRow(std::string& line, int) {
    Append(line, global[row]);
}
template <auto function>
static void AppendResult(std::string& line, int) {
    Append(line, static_cast<int>(function()));
}

// lapStart ends with three entries that hold sampleCount, lapLength with the last lap.
template <auto& table, int behindCount>
static void AppendLaps(std::string& line, int slot) {
    for (int lap = 0; lap < lapCount[slot] + behindCount && lap < lapTableSize; lap++) Append(line, table[slot][lap]);
}
template <auto& set, auto member>
static void AppendAnalog(std::string& line, int slot) {
    for (const AnalogCalibration& input : set[slot]) Append(line, input.*member);
}
// x0 y0 x1 y1 ...
template <int input>
static void AppendCurve(std::string& line, int slot) {
    for (int point = 0; point < curvePoints; point++) {
        Append(line, analog[slot][input].curveX[point]);
        Append(line, analog[slot][input].curveY[point]);
    }
}

static bool ToolbarOpen() { return ToolbarWindowHandle() != nullptr; }

// One field of the lap statistics, all rows.
template <auto field>
static void AppendStat(std::string& line, int slot) {
    Append(line, lapStats[slot].*field);
}
// The chain up to its closing point.
template <auto& array>
static void AppendCourse(std::string& line, int) {
    for (int point = 0; point <= coursePointCount; point++) Append(line, array[point]);
}

// Index, row and column of File 1 and of File 2.
static void AppendMemoCursors(std::string& line, int) {
    for (const MemoCursor& cursor : memoCursor)
        for (const int part : {cursor.index, cursor.row, cursor.column}) Append(line, part);
}

#define SLOTS_AS(name, global) {name, static_cast<int>(std::size(global)), AppendElement<global>}
#define SLOTS(global) SLOTS_AS(#global, global)
#define ONE_AS(name, global) {name, 1, AppendWhole<global>}
#define ONE(global) ONE_AS(#global, global)
#define STAT(field) {#field, fileSlots, AppendStat<&LapStats::field>}
#define EXTREME(field) STAT(field), {#field "_at", fileSlots, AppendStat<&LapStats::field##At>}

static constexpr Value values[] = {
    // Run store.
    SLOTS(slotInUse), SLOTS(fileKind), SLOTS(formatVersion), SLOTS(sampleCount), SLOTS(lapCount), SLOTS(timeFactor),
    SLOTS(cursorPos), SLOTS(currentLap), SLOTS(lapViewOffset), SLOTS(jumpTarget), SLOTS(LapTimeCentis), SLOTS(fileTitle),
    SLOTS(filePath), SLOTS(memoText), ONE(firmwareText),
    SLOTS(neDivider), SLOTS(neRange), SLOTS(frontPulses), SLOTS(frontTyreMm), SLOTS(rearPulses), SLOTS(rearTyreMm),
    SLOTS(rearOnGearbox), SLOTS(gearboxPulses), SLOTS(frontSprocket), SLOTS(rearSprocket), SLOTS(MarksPerLap),
    SLOTS(tpsClosedRaw), SLOTS(tpsOpenRaw), SLOTS(tpsSpan), SLOTS(fsusType), SLOTS(rsusType), SLOTS(fsusZeroRaw),
    SLOTS(rsusZeroRaw), SLOTS(fsusStroke), SLOTS(rsusStroke),
    {"analogType", fileSlots, AppendAnalog<analog, &AnalogCalibration::type>},
    {"analogSlope", fileSlots, AppendAnalog<analog, &AnalogCalibration::slope>},
    {"analogOffset", fileSlots, AppendAnalog<analog, &AnalogCalibration::offset>},
    {"analogCurve0", fileSlots, AppendCurve<0>}, {"analogCurve1", fileSlots, AppendCurve<1>},
    {"analogCurve2", fileSlots, AppendCurve<2>}, {"analogCurve3", fileSlots, AppendCurve<3>},
    SLOTS(auxDivider), SLOTS(lafDivider), SLOTS(primaryMain), SLOTS(primaryCounter), SLOTS(gearMain), SLOTS(gearCounter),
    SLOTS(primaryRatio), SLOTS(gearLimit), SLOTS(gearRatioSeen), SLOTS(LinkRatio), SLOTS(tpsMinSeen), SLOTS(tpsMaxSeen),
    SLOTS(fsusMaxSeen), SLOTS(rsusMaxSeen), SLOTS(channelMax), SLOTS(channelMin), SLOTS(showChannel),
    {"lapStart", fileSlots, AppendLaps<lapStart, 3>}, {"lapLength", fileSlots, AppendLaps<lapLength, 1>},
    SLOTS(extremeMarkValid), SLOTS(extremeMarkSample), SLOTS(extremeMarkY),

    // Loading.
    ONE(pathAtHand), ONE(nameAtHand), ONE(lengthAtHand), ONE(loadBusy), ONE(fileNamePrefix), ONE(nativeSizeEstimate),

    // The logger's set-up.
    ONE(neutralRpm), ONE(indicatorRpm), ONE(shifterHysteresis), ONE(shifterDirection), ONE(shifterResetLevel),
    ONE(shifterTrigger), ONE(cutPulses), ONE(cutRpm), ONE(asMode), ONE(awcMode), ONE(awcSlipThreshold), ONE(awcOffPulses),
    ONE(awcOnPulses), ONE(awcContinuousPulses), ONE(awcRepeatPulses), ONE(awcCorrection), ONE(awcType3InUse), ONE(awcType3),
    ONE(lapInput), ONE(lcOn), ONE(lcLockRpm), ONE(lcReleaseRpm), ONE(lcToleranceRpm),

    // Loop and frame.
    ONE(activityCount), ONE(idleFrame), ONE(animationPending), ONE(quitFlag), ONE(powerState), ONE(frameNumber), ONE(layoutCycle),
    {"mainWindow", 1, AppendResult<MainWindowOpen>}, {"toolbarWindow", 1, AppendResult<ToolbarOpen>}, ONE(screenWidth), ONE(screenHeight), ONE(clientWidth),
    ONE(clientHeight), ONE(halfWidth), ONE(halfHeight), ONE(rowHeight), ONE(fontSize), ONE(lapColumnWidth), ONE(lapListTop),
    ONE(viewZoom), ONE(viewZoomGoal), ONE(timeScale), ONE(scrollY), {"baseLineX", 1, AppendResult<BaseLineX>},
    ONE(graphPositionOn), ONE(afMapOn), ONE(realTimePlayOn), ONE(shortcutOverlayOn), ONE(shortcutFade), ONE(scrollBarOn),
    ONE(scrollBarGrow), SLOTS(fileBright), SLOTS(fileDim), SLOTS(neFactor), ONE(playStamp), ONE(afFade), ONE(afProgress),
    ONE(afInvert), ONE(afLow), ONE(afWidth), ONE(csvRangePending), ONE(clientVisible), ONE(appear), ONE(histBusy), ONE(histForce),
    ONE(keepOn), ONE(meterRedraw), ONE(popupWanted), ONE(popupCounter),
    ONE(bodyImage), ONE(tireImage), ONE(meterImage), ONE(needleImage), ONE(courseImage), ONE(summaryPanel), ONE(memoPanel),
    ONE(coursePopup), ONE(gridStrip), ONE(labelStrip), ONE(susImageA), ONE(susImageB), ONE(courseImageNoAlpha),
    ONE(bigFont), ONE(smallFont),

    // Lap table and simulation.
    SLOTS(lapChecked), SLOTS(lapOrder), SLOTS(firstRow), SLOTS(sortKey), SLOTS(selectState), SLOTS(bestLap), SLOTS(secondLap),
    SLOTS(bestSector), SLOTS(secondSector), ONE(statPage), ONE(sectorView), ONE(lowerFile),
    EXTREME(minNe), EXTREME(maxNe), EXTREME(maxVFW), EXTREME(maxVRW), EXTREME(maxFSUS), EXTREME(maxRSUS), STAT(avrFSUS),
    STAT(avrRSUS), EXTREME(minSlip), EXTREME(maxSlip), EXTREME(minAUX1), EXTREME(maxAUX1), EXTREME(minAUX2), EXTREME(maxAUX2),
    EXTREME(minLAF1), EXTREME(maxLAF1), EXTREME(minLAF2), EXTREME(maxLAF2), EXTREME(maxVFSus), EXTREME(minVFSus),
    EXTREME(maxVRSus), EXTREME(minVRSus), STAT(lapTime), STAT(sectorTime),
    ONE_AS("keepSelection", keepOn), ONE(simFront), ONE(simRear), ONE(simTireLength),

    // Input.
    ONE(mouseX), ONE(mouseY), ONE(mouseButtons), ONE(wheelNotches), ONE(lapSteps), ONE(shiftDown), ONE(ctrlDown),
    SLOTS(fileMoveOn), ONE(lapHover), ONE(panelHover), ONE(courseHover), ONE(courseDrag), ONE(widgetHover), ONE(dragKind), ONE(zoomDragOn),
    ONE(lafDelay), ONE(lafDelayShow), ONE(rulerFade), SLOTS(titleRect),

    // Read-outs.
    ONE(tagSpread), ONE(nameFade), ONE(tagValue), ONE(summaryFade), ONE(memoFade), {"memoCursor", 1, AppendMemoCursors},

    // Floating panels, also by the names of their settings.
    ONE(courseCenterX), ONE(courseCenterY), ONE(courseZoom), ONE(bodyX), ONE(bodyY), ONE(bodyZoom), ONE(meterX),
    ONE(meterY), ONE(meterZoom), ONE(histX), ONE(histY), ONE(histZoom),
    ONE_AS("Curse_X", courseCenterX), ONE_AS("Curse_Y", courseCenterY), ONE_AS("Curse_Z", courseZoom), ONE_AS("MC_X", bodyX),
    ONE_AS("MC_Y", bodyY), ONE_AS("MC_Z", bodyZoom), ONE_AS("Meter_X", meterX), ONE_AS("Meter_Y", meterY),
    ONE_AS("Meter_Z", meterZoom), ONE_AS("Susgram_X", histX), ONE_AS("Susgram_Y", histY), ONE_AS("Susgram_Z", histZoom),

    // Course.
    ONE(coursePointCount), ONE(courseOffset), {"courseX", 1, AppendCourse<courseX>}, {"courseY", 1, AppendCourse<courseY>},
    {"courseLen", 1, AppendCourse<courseLen>}, SLOTS(sectorMark), ONE(courseColorChannel), ONE(courseColorFile),
    ONE(courseCaption),

    // Settings.
    ONE(dataFolder), ONE_AS("Data", dataFolder), ONE(bmpFolder), ONE_AS("BMP", bmpFolder),
    ONE(windowX), ONE(windowY), ONE(windowWidth), ONE(windowHeight), ONE_AS("x", windowX), ONE_AS("y", windowY),
    ONE_AS("x2", windowWidth), ONE_AS("y2", windowHeight), ONE(zoomed),
    ONE(AFmap_YCH), ONE(AFmap_AFCH), ONE(AFmap_SWCH), ONE(AFmap_SWTHS),
    ONE(CursolValueMode), ONE(smoothingNE), ONE(smoothingVW), ONE(SmoothingSample), ONE(CoursePosSource), ONE(colortype),
    ONE(CourseLayout_on), ONE(GridFill), ONE(AnimeMode), ONE(BodyDisplay), ONE(SusgramDisplay), ONE(ExpertMode),
    ONE(BaseLinePos), ONE(AutoOnOffLoad), ONE(VFWCopyVRW), ONE(ModifyFileName), ONE(CslValWidth), ONE(SusFilter_n),
    ONE(ExclusiveF1Color), ONE(HD_Display), ONE(CourseFile_name),
    ONE(VSync), ONE(Memo_view), ONE(Blend_mode), ONE(Color_body), ONE(Debug), ONE(AWC), ONE(LC), ONE(Finalchg),
    ONE(VBerrexp), ONE(CompressFile), ONE(CompressFileVer), ONE(AllowCompressMode), ONE(SusVSampleNum), ONE(SmoothingSTD),
    ONE(Lastcono), ONE(Maxcono), ONE(ColorMap), ONE(RTM), ONE(Shifter), ONE(SPLT), ONE(csvLabel),
    ONE(csvRow), ONE(lapByNumber),

    // Graph layout and colours.
    ONE(channelPosition), ONE(channelZoom), ONE(GraphGrid_min), ONE(GraphGrid_max), ONE(GraphGrid_step),
    ONE(GraphGrid_disp), ONE(colorStored), ONE(colorCurrent),
    {"Color_Green", 1, AppendRow<colorStored, 0>}, {"Color_Gonly", 1, AppendRow<colorStored, 1>},
    ONE(Color_Red), ONE(Color_White),
    ONE(channelColor), ONE(backColor), ONE(panelBackColor), ONE(cursorColor), ONE(gridMajorColor), ONE(gridMinorColor),
    ONE(lapHoverColor), SLOTS(lapBarColor), ONE(scrollTrackColor), ONE(scrollThumbColor), ONE(scrollEdgeColor),
    ONE(debugColor), SLOTS(fileTextColor), SLOTS(lapTextColor), SLOTS(lapLineColor), SLOTS(panelMask), SLOTS(tagMask),
    ONE(whiteColor), ONE(speedRamp), ONE(coolRamp), ONE(ColorRamp),
};

// Lines of slotN.txt, in their order.
static constexpr const char* slotLines[] = {
    "slotInUse", "fileKind", "formatVersion", "sampleCount", "lapCount", "timeFactor", "cursorPos", "lapViewOffset",
    "jumpTarget", "fileTitle", "filePath", "memoText", "firmwareText", "neDivider", "neRange", "frontPulses", "frontTyreMm",
    "rearPulses", "rearTyreMm", "rearOnGearbox", "gearboxPulses", "frontSprocket", "rearSprocket", "MarksPerLap",
    "tpsClosedRaw", "tpsOpenRaw", "tpsSpan", "fsusType", "rsusType", "fsusZeroRaw", "rsusZeroRaw", "fsusStroke",
    "rsusStroke", "analogType", "analogSlope", "analogOffset", "analogCurve0", "analogCurve1", "analogCurve2",
    "analogCurve3", "auxDivider", "lafDivider", "primaryMain", "primaryCounter", "gearMain", "gearCounter", "primaryRatio",
    "gearLimit", "tpsMinSeen", "tpsMaxSeen", "fsusMaxSeen", "rsusMaxSeen", "channelMax", "channelMin", "showChannel",
    "lapStart", "lapLength",
};

std::span<const Value> AllValues() { return values; }

const Value* FindValue(std::string_view name) {
    for (const Value& value : values)
        if (name == value.name) return &value;
    return nullptr;
}

void AppendValueLine(std::string& text, const Value& value) {
    text += value.name;
    for (int slot = 0; slot < value.slots; slot++) value.append(text, slot);
    text += '\n';
}

void AppendSlotText(std::string& text, int slot) {
    for (const char* name : slotLines) {
        const Value& value = *FindValue(name);
        if (value.slots == 1 && slot != 0) continue;  // firmwareText is File 1's alone
        text += name;
        value.append(text, slot);
        text += '\n';
    }
}
