// recorder.h -- writes every drawing operation as one line of text, while drawing goes on.
//
// A line is the operation's name and its arguments, separated by single blanks: integers in decimal, floats and doubles
// as %.9g, colours as #RRGGBB, texts in double quotes with \xNN for every byte outside 0x20..0x7E and for " and \, images
// and fonts by the name of the global that holds them, `frame N` before each frame.
#pragma once
#include <string>

// Whether lines are written, and where to: appended to `out`. nullptr stops.
void RecordOperations(std::string* out);
bool RecordingOperations();
// `frame N` before a frame's operations; N counts from 1 since recording began.
void RecordFrame();
// The name under which an image or a font appears; whoever owns the global says so when it is made. Unnamed handles
// appear as image3, font0.
void NameImage(int image, const char* global);
void NameFont(int font, const char* global);
