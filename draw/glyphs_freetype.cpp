// Glyphs from the system's TrueType files.
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_TRUETYPE_TABLES_H

#include <algorithm>
#include <cstring>

#include "draw/glyphs.h"

// Files in order of preference; the first that opens is taken. Faces that the program does not know are drawn as the
// proportional one.
struct FaceFiles {
    const char* face;
    const char* files[4];
};
static const FaceFiles faceFiles[] = {
    {emSizedFace,
     {"/usr/share/fonts/opentype/ipafont-gothic/ipag.ttf", "/usr/share/fonts/truetype/fonts-japanese-gothic.ttf",
      "/usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc", "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf"}},
    {"Tahoma",
     {"/usr/share/wine/fonts/tahoma.ttf", "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
      "/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf",
      "/usr/share/fonts/opentype/ipafont-gothic/ipagp.ttf"}},
};
static const FaceFiles& japaneseFiles = faceFiles[0];

// A file at a size. The cell, ascent and descent together, is as high as was asked for.
struct OpenedFile {
    FT_Face file;  // nullptr when there is none
    int ascent;    // pixels from the top of the line to the base line
};
struct OpenedFace {
    OpenedFile own, japanese;  // what the face does not have comes from the second
};
static FT_Library library;
static std::vector<OpenedFace> faces;

// Scales a file to a size, in whole pixels of its em. Returns the ascent.
static int SetSize(FT_Face file, int size, bool emSized) {
    int ascent = file->ascender, descent = -file->descender;
    const auto* metrics = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(file, FT_SFNT_OS2));
    if (metrics && metrics->usWinAscent + metrics->usWinDescent > 0) {
        ascent  = metrics->usWinAscent;
        descent = metrics->usWinDescent;
    }
    const int em = std::max<int>(file->units_per_EM, 1), cell = emSized ? em : std::max(ascent + descent, 1);
    const int pixels = std::max(size * em / cell, 1);
    FT_Set_Pixel_Sizes(file, 0, static_cast<FT_UInt>(pixels));
    return std::min((ascent * pixels + em / 2) / em, size);
}

static OpenedFile OpenFirst(const FaceFiles& row, int size) {
    for (const char* path : row.files) {
        FT_Face file;
        if (FT_New_Face(library, path, 0, &file) != 0) continue;
        return {file, SetSize(file, size, std::strcmp(row.face, emSizedFace) == 0)};
    }
    return {nullptr, 0};
}

int OpenFace(const char* face, int size, int) {
    if (!library && FT_Init_FreeType(&library) != 0) return -1;
    const FaceFiles* row = std::find_if(std::begin(faceFiles), std::end(faceFiles),
                                        [face](const FaceFiles& files) { return std::strcmp(files.face, face) == 0; });
    if (row == std::end(faceFiles)) row = &faceFiles[1];
    OpenedFace opened{OpenFirst(*row, size), OpenFirst(japaneseFiles, size)};
    if (!opened.own.file) std::swap(opened.own, opened.japanese);
    if (!opened.own.file) return -1;
    faces.push_back(opened);
    return static_cast<int>(faces.size()) - 1;
}

void CloseFaces() {
    for (const OpenedFace& face : faces)
        for (FT_Face file : {face.own.file, face.japanese.file})
            if (file) FT_Done_Face(file);
    faces.clear();
    if (library) FT_Done_FreeType(library);
    library = nullptr;
}

void RasterizeGlyph(int number, char16_t unicode, Glyph& out) {
    out = Glyph{};
    const OpenedFace& face = faces[number];
    const bool borrowed = face.japanese.file && FT_Get_Char_Index(face.own.file, unicode) == 0;
    const OpenedFile& from = borrowed ? face.japanese : face.own;
    if (FT_Load_Char(from.file, unicode, FT_LOAD_RENDER | FT_LOAD_NO_BITMAP) != 0) return;
    const FT_GlyphSlot slot = from.file->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    out.left    = slot->bitmap_left;
    out.top     = from.ascent - slot->bitmap_top;
    out.width   = static_cast<int>(bitmap.width);
    out.height  = static_cast<int>(bitmap.rows);
    out.advance = static_cast<int>((slot->advance.x + 32) >> 6);
    out.coverage.resize(size_t(out.width) * out.height);
    for (int y = 0; y < out.height; ++y)
        std::copy_n(bitmap.buffer + ptrdiff_t{bitmap.pitch} * y, out.width, out.coverage.data() + size_t(out.width) * y);
}
