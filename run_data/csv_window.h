// csv_window.h -- what a CSV import shows while it runs: a progress bar and notes.
#pragma once

constexpr int csvProgressRange = 300;

// The dialog's hands. Without a dialog on a screen both are nullptr.
struct CsvWindow {
    void (*showProgress)(int position);  // 0 to csvProgressRange
    void (*addNote)(const char* text);   // ASCII, its line end included
};

inline void ShowCsvProgress(const CsvWindow& window, int position) {
    if (window.showProgress) window.showProgress(position);
}
inline void AddCsvNote(const CsvWindow& window, const char* text) {
    if (window.addNote) window.addNote(text);
}
