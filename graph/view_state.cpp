#include "graph/view_state.h"

#include <algorithm>
#include <iterator>

#include "draw/draw_layer.h"

int32_t activityCount;
int32_t idleFrame;
int32_t animationPending;

int32_t screenWidth, screenHeight;
int32_t clientWidth, clientHeight;
int32_t halfWidth, halfHeight;
int32_t clientVisible;
int32_t rowHeight, fontSize;
int32_t lapColumnWidth, lapListTop;

double  viewZoom;
int32_t viewZoomGoal;
double  timeScale;
int32_t scrollY;

int32_t graphPositionOn, afMapOn;
int32_t realTimePlayOn;
int32_t shortcutOverlayOn, shortcutFade;
int32_t scrollBarOn, scrollBarGrow;
int32_t fileBright[fileSlots];
int32_t fileDim[fileSlots];
float   neFactor[fileSlots];
int32_t playStamp;
int32_t afFade, afProgress;
int32_t afInvert, afLow, afWidth;
int32_t csvRangePending;
int32_t histForce;
int32_t keepOn;
int32_t meterRedraw;
int32_t popupWanted, popupCounter;
int32_t appear, histBusy;

int32_t  mouseX, mouseY;
uint32_t mouseButtons;
int32_t  wheelNotches, lapSteps;
int32_t  shiftDown, ctrlDown;
int32_t  fileMoveOn[fileSlots];
int32_t  lapHover, panelHover;
int32_t  courseHover;
uint32_t widgetHover;
int32_t  dragKind, zoomDragOn;
int32_t  courseDrag;
int32_t  lafDelay, lafDelayShow;
int32_t  rulerFade;
int32_t  titleRect[fileSlots][4];

int32_t courseCenterX, courseCenterY;
float   courseZoom;
int32_t bodyX, bodyY;
double  bodyZoom;
int32_t meterX, meterY;
double  meterZoom;
int32_t histX, histY;
double  histZoom;
int32_t courseColorChannel, courseColorFile, courseOffset;

int bodyImage, tireImage, meterImage, needleImage;
int courseImage, summaryPanel, memoPanel, coursePopup, gridStrip, labelStrip, susImageA, susImageB;
int courseImageNoAlpha;
int bigFont, smallFont;

// Until there is a window, the sizes are those of a new installation's window.
static void DefaultSizes() {
    screenWidth = clientWidth = 1024;
    screenHeight = clientHeight = 768;
    halfWidth = clientWidth / 2;
    halfHeight = clientHeight / 2;
    clientVisible = 1;
    rowHeight = 15;
    fontSize = 11;
    lapColumnWidth = 105;
    lapListTop = 300;
}

static void DefaultModes() {
    graphPositionOn = afMapOn = realTimePlayOn = 0;
    shortcutOverlayOn = 1;
    shortcutFade = 512;
    scrollBarOn = 1;
    scrollBarGrow = 0;
    std::fill(std::begin(fileBright), std::end(fileBright), 255);
    std::fill(std::begin(fileDim), std::end(fileDim), 0);
    std::fill(std::begin(neFactor), std::end(neFactor), 1.0f);
    playStamp = 0;
    afFade = afProgress = afInvert = 0;
    afLow = 1250;
    afWidth = 50;
    csvRangePending = 0;
    histForce = keepOn = meterRedraw = 0;
    popupWanted = popupCounter = 0;
    appear = 32;
    histBusy = 0;
}

static void DefaultInput() {
    mouseX = mouseY = 0;
    mouseButtons = 0;
    wheelNotches = lapSteps = 0;
    shiftDown = ctrlDown = 0;
    std::fill(std::begin(fileMoveOn), std::end(fileMoveOn), 1);
    lapHover = panelHover = courseHover = 0;
    widgetHover = 0;
    dragKind = zoomDragOn = courseDrag = 0;
    lafDelay = lafDelayShow = 0;
    rulerFade = 32;
    for (auto& rect : titleRect) std::fill(std::begin(rect), std::end(rect), 0);
}

void DefaultViewState() {
    activityCount = 150;
    idleFrame = animationPending = 0;
    viewZoom = 50.0;
    viewZoomGoal = 10000;
    timeScale = 5.0;
    scrollY = 0;
    DefaultSizes();
    DefaultModes();
    DefaultInput();
    courseColorChannel = courseColorFile = courseOffset = 0;
    for (int* handle : {&bodyImage, &tireImage, &meterImage, &needleImage, &courseImage, &summaryPanel, &memoPanel, &coursePopup,
                        &gridStrip, &labelStrip, &susImageA, &susImageB, &bigFont, &smallFont})
        *handle = noHandle;
    courseImageNoAlpha = 0;
}
