// final_simulation.h -- the thinking of the "Final Simulation" dialog: the engine speed that File 1 would have had with
// other sprockets or another rear tyre.
//
// The result is one factor, neFactor[0], by which every shown Ne of File 1 is multiplied. The log stays as it is.
#pragma once

// Simulated teeth and rear tyre circumference. They outlive the dialog; a load into File 1 sets them to the log's.
extern int simFront, simRear;  // teeth, 1 and up
extern int simTireLength;      // mm

// The lists hold every number of teeth between these; item 0 is the first.
constexpr int frontTeethFirst = 13, frontTeethLast = 22;
constexpr int rearTeethFirst = 30, rearTeethLast = 70;

enum class TeethArrow { frontUp, frontDown, rearUp, rearDown };
enum class TeethList { front, rear };

// Opening: a log without sprocket data counts as 1 : 1. The factor stays.
void OpenFinalSimulation();
// An item of a list was selected; a negative one is none.
void ChooseTeeth(TeethList list, int item);
// The item of the simulated teeth, -1 when the list has none.
int  TeethItem(TeethList list);
// The tyre field was left. Kept: the field goes on showing what was typed.
void LeaveTireLength(const char* typed);
// Changes the logged teeth themselves, which counts from the next change on. Only with Finalchg or Debug.
void StepLoggedTeeth(TeethArrow arrow);
// Simulated values as logged, factor 1: "Reset", and a load into File 1.
void ResetFinalSimulation();

// Rear over front as the dialog shows it.
constexpr int ratioTextSize = 24;
void LoggedRatioText(char text[ratioTextSize]);
void SimulatedRatioText(char text[ratioTextSize]);

void DefaultFinalSimulation();
