// resources.cpp -- images, fonts, colours and scales, made at start, after a lost device and after a change of the screen.
#include "app/frame_loop.h"
#include "draw/draw_layer.h"
#include "draw/recorder.h"
#include "graph/color_scheme.h"
#include "graph/drawables.h"
#include "graph/grid.h"
#include "graph/rest_panels.h"
#include "graph/view_state.h"
#include "platform/boxes.h"
#include "platform/files.h"
#include "platform/window.h"
#include "settings/settings.h"
#include "views/course_file.h"
#include "views/course_image.h"

struct PictureFile {
    int*        handle;
    const char *name, *fileName;
};
static const PictureFile pictureFiles[] = {
    {&bodyImage, "bodyImage", "Body.BMP"},
    {&tireImage, "tireImage", "TIRE.BMP"},
    {&meterImage, "meterImage", "METER.BMP"},
    {&needleImage, "needleImage", "Needle.BMP"},
};

constexpr int screenHigh = 0;  // as a height: that of the virtual screen
struct Drawable {
    int*        handle;
    const char* name;
    int         width, height;
    const char* failure;  // shown with Debug
};
static const Drawable drawables[] = {
    {&courseImage, "courseImage", 512, 512, "Memory err cgh00"},
    {&summaryPanel, "summaryPanel", 256, 128, "Memory err iwgh00"},
    {&memoPanel, "memoPanel", 192, 256, "Memory err iwgh02"},
    {&coursePopup, "coursePopup", 120, 80, "Memory err iwgh03"},
    {&gridStrip, "gridStrip", 8, screenHigh, "Memory err gh00"},
    {&labelStrip, "labelStrip", 32, screenHigh, "Memory err gh01"},
    {&susImageA, "susImageA", 256, 128, "Memory err sugh00"},
    {&susImageB, "susImageB", 256, 128, "Memory err sugh01"},
};

// A missing picture is not reported: drawing with its handle does nothing.
static void LoadPictures() {
    for (const PictureFile& picture : pictureFiles) {
        *picture.handle = LoadImageFile(picture.fileName, 1);
        NameImage(*picture.handle, picture.name);
    }
}

// The course is drawn over the graphs through an alpha channel where there can be one.
static int MakeCourseImage(const Drawable& image) {
    const int withAlpha = CanMakeAlphaImages() ? MakeDrawable(image.width, image.height, true) : noHandle;
    courseImageNoAlpha = withAlpha == noHandle;
    return courseImageNoAlpha ? MakeDrawable(image.width, image.height) : withAlpha;
}

static void MakeDrawables() {
    for (const Drawable& image : drawables) {
        const int height = image.height == screenHigh ? screenHeight : image.height;
        *image.handle = image.handle == &courseImage ? MakeCourseImage(image) : MakeDrawable(image.width, height);
        NameImage(*image.handle, image.name);
        if (*image.handle == noHandle && Debug) ShowBox(image.failure, "ZRKA", BoxOwner::toolbar);
    }
}

void BuildFonts() {
    rowHeight = HD_Display == 1 ? 17 : 15;
    fontSize = HD_Display == 1 ? 15 : 11;
    lapColumnWidth = HD_Display == 1 ? 110 : 105;
    lapListTop = HD_Display == 1 ? 340 : 300;
    ResetFonts(0);
    bigFont = CreateFontHandle("MS Gothic", rowHeight, 1, 0);
    smallFont = CreateFontHandle("Tahoma", fontSize, 1, 0);
    NameFont(bigFont, "bigFont");
    NameFont(smallFont, "smallFont");
}

void ReadClientSize() {
    int width = 0, height = 0;
    GetClientSize(&width, &height);
    clientVisible = width >= 1 && height >= 1;
    if (!clientVisible) return;
    clientWidth = width;
    clientHeight = height;
    halfWidth = width / 2;
    halfHeight = height / 2;
}

void RebuildResources() {
    DeleteAllImages();
    VirtualScreenSize(&screenWidth, &screenHeight);
    ChangeVideoMode((screenWidth + 7) / 8 * 8, screenHeight, 32, 0, 60);  // Kept: rounded up here, down at the start.
    ReadClientSize();
    EnterProgramFolder();
    LoadPictures();
    MakeDrawables();
    BuildFonts();
    SetSmoothScaling(1);
    BuildColors();
    BuildColorRamp();
    DrawSummaryImage();
    BuildGrid();
    CourseLayout_on &= LoadCourse();
    RedrawCourseImage(1);
    meterRedraw = 1;
    activityCount = 150;
    if (zoomed) ShowMainWindow(2);
}
