#include "settings/settings.h"

#include <cstring>

char dataFolder[261];
char bmpFolder[261];

int windowX, windowY;
int windowWidth, windowHeight;
int zoomed;

int AFmap_YCH, AFmap_AFCH, AFmap_SWCH;
double AFmap_SWTHS;

int CursolValueMode;
int smoothingNE, smoothingVW;
int SmoothingSample;
int CoursePosSource;
int colortype;
int CourseLayout_on;
int GridFill;
int AnimeMode;
int BodyDisplay;
int SusgramDisplay;
int ExpertMode;
int BaseLinePos;
int AutoOnOffLoad;
int VFWCopyVRW;
int ModifyFileName;
int CslValWidth;
int SusFilter_n;
int ExclusiveF1Color;
int HD_Display;
char CourseFile_name[257];

int VSync, Memo_view, Blend_mode, Color_body, Debug, AWC, LC, Finalchg, VBerrexp;
int CompressFile, CompressFileVer, AllowCompressMode;
int SusVSampleNum;
int SmoothingSTD;
int Lastcono, Maxcono;
int ColorMap, RTM, Shifter, SPLT;

int channelPosition[layoutChannels];
double channelZoom[layoutChannels];
int GraphGrid_min[layoutChannels];
int GraphGrid_max[layoutChannels];
int GraphGrid_step[layoutChannels];
int GraphGrid_disp[layoutChannels];

int colorStored[2][colorRowSize];
int colorCurrent[colorRowSize];
int Color_Red[colorRowSize];
int Color_White[colorRowSize];

static void DefaultModes() {
    CursolValueMode = 1;
    smoothingNE = smoothingVW = 0;
    SmoothingSample = 4;
    CoursePosSource = 0;
    colortype = 0;
    CourseLayout_on = GridFill = AnimeMode = BodyDisplay = 1;
    SusgramDisplay = 0;
    ExpertMode = 0;
    BaseLinePos = 0;
    AutoOnOffLoad = 1;
    VFWCopyVRW = ModifyFileName = 0;
    CslValWidth = 0;
    SusFilter_n = 7;
    ExclusiveF1Color = 0;
    HD_Display = 0;
    std::strcpy(CourseFile_name, "sorrel.crs");
}

static void DefaultSwitches() {
    VSync = Memo_view = ColorMap = 1;
    Blend_mode = Color_body = Debug = AWC = LC = Finalchg = VBerrexp = 0;
    CompressFile = AllowCompressMode = 0;
    CompressFileVer = 3;
    SusVSampleNum = 3;
    SmoothingSTD = 2;
    Lastcono = 16;
    Maxcono = 32;
    RTM = Shifter = SPLT = 0;
}

// Start values of a channel's layout, in the order of the channel numbers.
struct ChannelStandard {
    int position;
    double zoom;
    int min, max, step, disp;
    int file1, file2, file3;
};
static constexpr ChannelStandard channelStandard[layoutChannels] = {
    {360, 50, 5000, 16000, 1000, 1, 0, 2, 8}, {430, 1, 0, 100, 25, 1, 0, 2, 8},
    {840, 20, 0, 3000, 500, 1, 0, 2, 8},      {840, 20, 0, 3000, 500, 0, 1, 3, 7},
    {600, 75, 0, 12000, 1000, 1, 0, 2, 8},    {680, 50, 0, 3500, 1000, 1, 1, 3, 7},
    {450, 8, 1150, 1350, 50, 1, 0, 2, 8},     {450, 8, 1150, 1350, 50, 0, 1, 3, 7},
    {80, 20, 90, 150, 30, 0, 0, 2, 8},        {840, 10, 0, 5000, 2500, 0, 0, 2, 8},
    {840, 10, 0, 5000, 2500, 0, 0, 3, 7},     {700, 10, -500, 200, 100, 0, 0, 2, 8},
    {600, 50, -2000, 2000, 1000, 0, 0, 2, 8}, {680, 50, -1000, 1000, 500, 0, 0, 2, 8},
};

static void DefaultLayout() {
    for (int channel = 0; channel < layoutChannels; channel++) {
        const ChannelStandard& standard = channelStandard[channel];
        channelPosition[channel] = standard.position;
        channelZoom[channel] = standard.zoom;
        GraphGrid_min[channel] = standard.min;
        GraphGrid_max[channel] = standard.max;
        GraphGrid_step[channel] = standard.step;
        GraphGrid_disp[channel] = standard.disp;
        colorStored[0][channel] = colorStored[1][channel] = colorCurrent[channel] = standard.file1;
        Color_Red[channel] = standard.file2;
        Color_White[channel] = standard.file3;
    }
}

void DefaultSettings() {
    dataFolder[0] = bmpFolder[0] = '\0';
    windowX = windowY = 0;
    windowWidth = 1024;
    windowHeight = 768;
    zoomed = 0;
    AFmap_YCH = AFmap_AFCH = AFmap_SWCH = 0;
    AFmap_SWTHS = 2.5;
    DefaultModes();
    DefaultSwitches();
    DefaultLayout();
}
