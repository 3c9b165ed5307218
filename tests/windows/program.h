// program.h -- starts the real program in a folder of its own and drives it from outside, by messages, as a user would.
//
// Each test has its own copy of the program: settings, pictures and logs lie beside it. Nothing here waits for a fixed
// time: WaitFor looks again and again, and gives up only after a time that no healthy run needs.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

// True as soon as `condition` is; false after `seconds`.
bool WaitFor(const std::function<bool()>& condition, int seconds = 30);

// Pixels of a window's client area as the screen shows them, 0x00RRGGBB, top row first.
struct Picture {
    int width = 0, height = 0;
    std::vector<uint32_t> pixels;
    bool operator==(const Picture&) const = default;
    uint32_t At(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
    // Inside `part`; -1 when the sizes differ.
    int DifferentPixels(const Picture& other, RECT part = {0, 0, 10000, 10000}) const;
};
Picture GrabClient(HWND window);
Picture ReadBmp(const std::string& path);
int ColorCount(const Picture& picture);

struct Program {
    TestFolder home;
    PROCESS_INFORMATION process = {};
    HWND main = nullptr, toolbar = nullptr;

    // A copy of the program, or of the dialog stand ("dialog_stand.exe"), in a folder with nothing else.
    explicit Program(const char* executable = "ZRKA.exe");
    ~Program();  // ends what still runs
    Program(const Program&) = delete;

    // Writes a believable log into the folder; returns its path.
    std::string WriteLog(const std::string& name, const SampleLogOptions& options = {}) const;
    // Runs it, and waits until both windows stand. False when they do not come. Once it has ended it can start again.
    bool Start(const std::vector<std::string>& arguments = {});
    // Runs it, and waits for nothing: a box may stand before its windows.
    bool Launch(const std::vector<std::string>& arguments = {});
    // Waits for both windows; part of Start, and needed after Launch and when the program makes them anew.
    bool FindWindows();
    // Waits for the end; the exit code, or -1 when it does not end.
    int ExitCode();
    // Closes the main window as its system menu does, and waits for the end.
    int Close();
    // Waits until the picture no longer changes: the program is at rest.
    Picture RestingPicture() const;
    // Waits until the list of keys has gone that stands over the traces after the start. It fades by the frame: where the program
    // rests before, some of it stays until frames are drawn again, and no two pictures are the same there.
    bool LetKeyListFade() const;
    // Shows the main window minimised, maximised or restored, and waits until it stays so.
    bool Show(int command) const;
    // A key as the main window receives it.
    void Type(int character) const { PostMessageW(main, WM_CHAR, static_cast<WPARAM>(character), 0); }

    // A visible window of the program with this title, other than the main ones; nullptr when there is none.
    HWND Find(const std::string& title) const;
    HWND WaitForWindow(const std::string& title) const;
    bool WaitUntilGone(const std::string& title) const;
    // A message box with this title and text: waits for it, presses the button, waits until it has gone.
    bool AnswerBox(const std::string& title, const std::string& text, int button = IDOK) const;
    // The system's file dialog: types the path and presses OK.
    bool AnswerFileDialog(const std::string& title, const std::string& path) const;
};

// Runs one of the executables beside the tests to its end; the exit code, or -1 when it does not end.
int RunTool(const std::string& name, const std::vector<std::string>& arguments);
// What it prints on the way, lines ended by a bare line feed; "" when it fails.
std::string ToolOutput(const std::string& name, const std::vector<std::string>& arguments);

// Controls of a dialog, by id.
std::string WindowText(HWND window);
std::string ControlText(HWND dialog, int id);
// Expects that a dialog's visible controls stand inside it and beside each other; returns how many there are.
size_t ControlsInPlace(HWND dialog);
bool ControlChecked(HWND dialog, int id);
void SetControlText(HWND dialog, int id, const std::string& utf8);
// Posted, as a sent one would not return while the press has a dialog open.
void Click(HWND dialog, int id);
// The value of a key in a profile file, "" without it.
std::string IniValue(const std::string& ini, const std::string& section, const std::string& key);
