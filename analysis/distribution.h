// distribution.h -- the thinking of dialog 1024, "percentage": what share of the riding time a channel spent in each band of
// values, for File 1 and File 2, as text.
//
// Bands   with n = (max - min) / step + 2: bin 0 counts values below min; bin i, from 1 on, those from min + (i - 1) x step up
//         to below min + i x step; bin n - 1 all above as well.
// Units   rpm after neFactor, % throttle, mm stroke.
#pragma once
#include <string>

constexpr int distChannels = 4;
enum DistChannel : int { distNe, distTh, distFrSUS, distRrSUS };
extern const char* const distChannelNames[distChannels];
constexpr int distLapChoices = 2;
extern const char* const distLapNames[distLapChoices];  // all laps, the checked ones

// A row of bands; also the texts and numbers of the three fields, in this order.
enum DistField : int { distFieldMin, distFieldMax, distFieldStep, distFields };
using DistBands = int[distFields];

// What each channel's fields hold when it is chosen; kept while the program runs, changed by leaving the channel for another.
extern int distMin[distChannels], distMax[distChannels], distStep[distChannels];
// What is chosen and typed at the moment.
extern int       distChannel, distLaps;
extern DistBands distBands;
// The results, File 1 on the left and File 2 on the right. Lines end with CR LF.
constexpr int distFiles = 2;
extern std::string distTexts[distFiles];

// Opening: Ne with its bands, all laps, no results.
void OpenDistribution();
// A field was left: its number is limited and comes back as the field shows it from now on.
int LeaveDistField(DistField field, const char* typed);
// Another channel was selected; `typed` is what the fields of the last one show. Sets distBands.
void ChooseDistChannel(int channel, const char* const typed[distFields]);
// "Analyze": fills distTexts.
void Analyze(const char* const typed[distFields]);
// The same with distBands as it stands.
void AnalyzeBands();

void DefaultDistribution();
