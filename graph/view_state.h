// view_state.h -- what the frame shows and how: zooms, sizes, fades, modes.
//
// Written  by start-up, the loop, the input step and the tool bar; read by everything that draws.
#pragma once
#include <cstdint>

#include "run_data/channels.h"
#include "settings/settings.h"

// Frames and rest.
extern int32_t activityCount;     // frames still to be drawn
extern int32_t idleFrame;         // 1: nothing moved, nothing pending (input step)
extern int32_t animationPending;  // 1: something still glides; cleared at the start of the input step

// Sizes, pixels.
extern int32_t screenWidth, screenHeight;  // virtual screen
extern int32_t clientWidth, clientHeight;  // each frame
extern int32_t halfWidth, halfHeight;
extern int32_t clientVisible;              // 0 while minimised: the sizes keep their last values, nothing is drawn
extern int32_t rowHeight, fontSize;        // size and line pitch of bigFont and smallFont
extern int32_t lapColumnWidth, lapListTop;

// The mapping: x = (i x 100 - cursorPos) x viewZoom / (timeFactor x timeScale x 100) + baseLineX.
extern double  viewZoom;      // 50 at start, eases to viewZoomGoal / 10000
extern int32_t viewZoomGoal;  // x 10000
extern double  timeScale;     // samples per pixel at timeFactor 1 and viewZoom 1
extern int32_t scrollY;       // pixels
inline int32_t BaseLineX() { return halfWidth + BaseLinePos; }  // x of the cursor line, common to all files

// Modes and fades.
extern int32_t graphPositionOn, afMapOn;        // both clear: normal graphs
extern int32_t realTimePlayOn;
extern int32_t shortcutOverlayOn, shortcutFade;
extern int32_t scrollBarOn, scrollBarGrow;      // grow 0..32
extern int32_t fileBright[fileSlots];           // 0..255, rises to 255 or falls to 96
extern int32_t fileDim[fileSlots];              // 1: towards 96
extern float   neFactor[fileSlots];             // multiplier of every shown Ne
extern int32_t playStamp;                       // NowMs at the last step of real-time play
extern int32_t afFade, afProgress;              // A/F map: fade, building progress (255 finished)
extern int32_t afInvert, afLow, afWidth;        // sense of its switch; its middle band, 0.01 of the ratio: 900..1600, 0..200
extern int32_t csvRangePending;                 // 1: the CSV export waits for a range on the graph
extern int32_t histForce;                       // suspension histogram is to be built anew
extern int32_t keepOn;                          // "Keep" of the lap table
extern int32_t meterRedraw;                     // meter and body images need redrawing
extern int32_t popupWanted, popupCounter;       // CoursePopup, 0..32
extern int32_t appear, histBusy;                // body view: entry 0..32; 1: the histogram drew segments in the last frame

// Input as the frame sees it (written by the input step).
extern int32_t  mouseX, mouseY;
extern uint32_t mouseButtons;
extern int32_t  wheelNotches, lapSteps;
extern int32_t  shiftDown, ctrlDown;
extern int32_t  fileMoveOn[fileSlots];
extern int32_t  lapHover, panelHover;           // 0, or 1..3 the file's column; lapHover 4: the scroll bar is dragged
extern int32_t  courseHover;
extern uint32_t widgetHover;                    // bits: 1 body view, 2 meter, 4 histogram
extern int32_t  dragKind, zoomDragOn;           // left button: 0 nothing, 1 a spent click, 2 cursor, 3 scroll bar
extern int32_t  courseDrag;                     // not 0: the left button holds the course map
extern int32_t  lafDelay, lafDelayShow;         // samples 0..200; frames
extern int32_t  rulerFade;                      // 0..32
extern int32_t  titleRect[fileSlots][4];        // left, top, right, bottom of the file name

// Course colouring, and place of the floating panels, which are settings (Curse_*, MC_*, Meter_*, Susgram_*).
extern int32_t courseCenterX, courseCenterY;
extern float   courseZoom;
extern int32_t bodyX, bodyY;
extern double  bodyZoom;
extern int32_t meterX, meterY;
extern double  meterZoom;
extern int32_t histX, histY;
extern double  histZoom;
extern int32_t courseColorChannel, courseColorFile, courseOffset;

// Images and fonts of the rebuild step, noHandle when missing.
extern int bodyImage, tireImage, meterImage, needleImage;
extern int courseImage, summaryPanel, memoPanel, coursePopup, gridStrip, labelStrip, susImageA, susImageB;
extern int courseImageNoAlpha;
extern int bigFont, smallFont;

void DefaultViewState();
