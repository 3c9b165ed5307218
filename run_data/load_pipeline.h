// load_pipeline.h -- from the wish to open a log to a filled slot.
#pragma once
#include <cstdint>
#include <vector>

constexpr char askTheUser = '\xFF';       // first byte of a request that wants the open dialog
extern const char askRequest[2];          // the request that tool bar and keys hold

extern char pathAtHand[260];              // full path of the file being handled, UTF-8
extern char nameAtHand[260];              // its name
extern int  lengthAtHand;                 // bytes of the file buffer; readers may shorten it
extern int  loadBusy;                     // 1 while a load, or a dialog that must not meet one, runs
extern char fileNamePrefix[10];           // text inserted by the rename; not stored, empty at start

// Loads a log into a slot. `request` is a UTF-8 path, or begins with askTheUser. Returns at once while loadBusy.
void LoadFile(const char* request, int slot);
// Empties File 2 and File 3; with Shift down File 3 alone.
void Unload();
// Hands a file (`buffer` has lengthAtHand bytes and 1024 zero bytes behind them) to the reader that its first byte and
// pathAtHand's extension ask for. 0 a reader ran, 1 the type is refused ("Not support File Type", "File Error").
int DispatchByType(const uint8_t* buffer, int slot);
// Renames the file at hand after its fastest lap when ModifyFileName is on.
void RenameAfterFastestLap(int slot);
void DefaultLoadPipeline();
