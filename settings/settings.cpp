#include "settings/settings.h"

#include "settings/graph_layout.h"
#include "settings/settings_file.h"

char dataFolder[261];
char bmpFolder[261];

int windowX, windowY;
int windowWidth, windowHeight;
int zoomed;

int AFmap_YCH, AFmap_AFCH, AFmap_SWCH;
float AFmap_SWTHS;

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

void DefaultSettings() {
    const ProfileText empty;
    ReadSettingKeys(empty);
    ReadLayoutKeys(empty);
}
