#include "tests/windows/program.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "platform/win32/wide.h"

bool WaitFor(const std::function<bool()>& condition, int seconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds) * 1000;
    while (!condition()) {
        if (GetTickCount64() > end) return false;
        Sleep(20);
    }
    return true;
}

// --- pictures ----------------------------------------------------------------------------------------------------------

Picture GrabClient(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    Picture picture{client.right, client.bottom, std::vector<uint32_t>(static_cast<size_t>(client.right) * client.bottom)};
    if (picture.pixels.empty()) return picture;
    BITMAPINFO info = {};
    info.bmiHeader  = {sizeof info.bmiHeader, client.right, -client.bottom, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC screen = GetDC(window), memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, client.right, client.bottom);
    const HGDIOBJ old    = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, client.right, client.bottom, screen, 0, 0, SRCCOPY);
    SelectObject(memory, old);
    GetDIBits(memory, bitmap, 0, static_cast<UINT>(client.bottom), picture.pixels.data(), &info, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, screen);
    for (uint32_t& pixel : picture.pixels) pixel &= 0xFFFFFF;
    return picture;
}

// 24 bit, bottom row first, as the program writes them.
Picture ReadBmp(const std::string& path) {
    std::ifstream file(TestFolder::FromUtf8(path), std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    const auto number = [&bytes](size_t at) {
        int32_t value;
        std::memcpy(&value, bytes.data() + at, 4);
        return value;
    };
    if (bytes.size() < 54) return {};
    Picture picture{number(18), number(22), {}};
    const size_t row = (static_cast<size_t>(picture.width) * 3 + 3) / 4 * 4, start = static_cast<size_t>(number(10));
    if (bytes.size() < start + row * picture.height) return {};
    for (int y = 0; y < picture.height; ++y) {
        const auto* line = reinterpret_cast<const uint8_t*>(bytes.data()) + start + row * (picture.height - 1 - y);
        for (int x = 0; x < picture.width; ++x)
            picture.pixels.push_back(line[x * 3 + 2] << 16 | line[x * 3 + 1] << 8 | line[x * 3]);
    }
    return picture;
}

int Picture::DifferentPixels(const Picture& other, RECT part) const {
    if (width != other.width || height != other.height) return -1;
    int different = 0;
    for (int y = part.top; y < std::min<int>(height, part.bottom); ++y)
        for (int x = part.left; x < std::min<int>(width, part.right); ++x) different += At(x, y) != other.At(x, y);
    return different;
}

int ColorCount(const Picture& picture) {
    return static_cast<int>(std::set<uint32_t>(picture.pixels.begin(), picture.pixels.end()).size());
}

// --- the program -------------------------------------------------------------------------------------------------------

static std::wstring BesideTheTests(const std::string& name) {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L"\\/") + 1) + Wide(name);
}

// `output`: where it prints to, when not to the console.
static bool StartProcess(const std::wstring& program, const std::vector<std::string>& arguments, PROCESS_INFORMATION& process,
                         HANDLE output = nullptr) {
    std::wstring command = L"\"" + program + L"\"";
    for (const std::string& argument : arguments) command += L" \"" + Wide(argument) + L"\"";
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    if (output) {
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdOutput = output;
        start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    }
    return CreateProcessW(nullptr, command.data(), nullptr, nullptr, output != nullptr, 0, nullptr, nullptr, &start, &process);
}

static int WaitForExit(const PROCESS_INFORMATION& process) {
    if (WaitForSingleObject(process.hProcess, 30000) != WAIT_OBJECT_0) return -1;
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    return static_cast<int>(code);
}

static void End(PROCESS_INFORMATION& process) {
    if (!process.hProcess) return;
    TerminateProcess(process.hProcess, 99);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hProcess);
    CloseHandle(process.hThread);
    process = {};
}

int RunTool(const std::string& name, const std::vector<std::string>& arguments) {
    PROCESS_INFORMATION process = {};
    if (!StartProcess(BesideTheTests(name), arguments, process)) return -1;
    const int code = WaitForExit(process);
    End(process);
    return code;
}

std::string ToolOutput(const std::string& name, const std::vector<std::string>& arguments) {
    const std::wstring path =
        std::filesystem::temp_directory_path().wstring() + L"zrka_output_" + std::to_wstring(GetCurrentProcessId());
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE output = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited, CREATE_ALWAYS, 0, nullptr);
    PROCESS_INFORMATION process = {};
    const int code = StartProcess(BesideTheTests(name), arguments, process, output) ? WaitForExit(process) : -1;
    End(process);
    CloseHandle(output);
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    file.close();
    DeleteFileW(path.c_str());
    EXPECT_EQ(code, 0) << name;
    if (code != 0) return "";
    std::erase(text, '\r');
    return text;
}

Program::Program(const char* executable) {
    EXPECT_TRUE(CopyFileW(BesideTheTests(executable).c_str(), Wide(home.Path("ZRKA.exe")).c_str(), FALSE))
        << executable << " is not built";
    home.Write("sorrel.crs", MakeCourse("sorrel"));  // without one, a box stands before the first frame
}

Program::~Program() { End(process); }

std::string Program::WriteLog(const std::string& name, const SampleLogOptions& options) const {
    const std::vector<uint8_t> bytes = MakeSampleLog(options);
    return home.Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

struct Search {
    DWORD process;
    std::function<bool(HWND)> wanted;
    HWND found;
};

static HWND FindWindowOf(DWORD process, const std::function<bool(HWND)>& wanted) {
    Search search{process, wanted, nullptr};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            Search& search = *reinterpret_cast<Search*>(parameter);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            if (owner != search.process || !IsWindowVisible(window) || !search.wanted(window)) return TRUE;
            search.found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

static bool IsDialog(HWND window) {
    wchar_t name[16] = L"";
    GetClassNameW(window, name, 16);
    return std::wstring(name) == L"#32770";
}

bool Program::Launch(const std::vector<std::string>& arguments) {
    End(process);  // of an earlier start
    main = toolbar = nullptr;
    return StartProcess(Wide(home.Path("ZRKA.exe")), arguments, process);
}

bool Program::Start(const std::vector<std::string>& arguments) { return Launch(arguments) && FindWindows(); }

bool Program::FindWindows() {
    // The tool bar is shown last.
    const auto titled = [](const char* begin) {
        return [=](HWND window) { return WindowText(window).starts_with(begin); };
    };
    return WaitFor([&] {
        main    = FindWindowOf(process.dwProcessId, titled("ZRKA Ver"));
        toolbar = FindWindowOf(process.dwProcessId, [](HWND window) { return IsDialog(window) && WindowText(window) == "ZRKA"; });
        return main && toolbar;
    });
}

int Program::ExitCode() { return WaitForExit(process); }

int Program::Close() {
    PostMessageW(main, WM_SYSCOMMAND, SC_CLOSE, 0);
    return ExitCode();
}

bool Program::Show(int command) const {
    // A window manager's late answer to the last change can undo this one: asks again until nothing has come for a while.
    constexpr ULONGLONG askAgainMs = 1000, settledMs = 300;
    const auto stands = [&] {
        if (command == SW_MINIMIZE) return IsIconic(main) != FALSE;
        return !IsIconic(main) && (command == SW_MAXIMIZE) == (IsZoomed(main) != FALSE);
    };
    ULONGLONG asked = 0, since = GetTickCount64();
    return WaitFor([&] {
        const ULONGLONG now = GetTickCount64();
        if (stands()) return now - since > settledMs;
        since = now;
        if (now - asked > askAgainMs) {
            ShowWindowAsync(main, command);
            asked = now;
        }
        return false;
    });
}

Picture Program::RestingPicture() const {
    // Long enough for a fade to show a change, and far longer than a pass.
    constexpr ULONGLONG stillMs = 1500;
    Picture last    = GrabClient(main);
    ULONGLONG since = GetTickCount64();
    const bool rests = WaitFor(
        [&] {
            Picture now = GrabClient(main);
            if (now != last) since = GetTickCount64();
            last = std::move(now);
            return GetTickCount64() - since > stillMs;
        },
        60);
    EXPECT_TRUE(rests) << "the picture keeps changing";
    return last;
}

bool Program::LetKeyListFade() const {
    // Its head, in grey on the blue of the grid, left of all traces; and a key that draws frames and does nothing else.
    constexpr RECT head = {300, 64, 445, 80};
    constexpr ULONGLONG pressAgainMs = 300;
    ULONGLONG pressed = 0;
    return WaitFor(
        [&] {
            if (GetTickCount64() - pressed > pressAgainMs) {
                Type('C');
                pressed = GetTickCount64();
            }
            const Picture now = GrabClient(main);
            for (int y = head.top; y < head.bottom; y++)
                for (int x = head.left; x < head.right; x++)
                    if (now.At(x, y) & 0xFF0000) return false;
            return true;
        },
        120);
}

HWND Program::Find(const std::string& title) const {
    return FindWindowOf(process.dwProcessId,
                        [&](HWND window) { return window != main && window != toolbar && WindowText(window) == title; });
}

HWND Program::WaitForWindow(const std::string& title) const {
    WaitFor([&] { return Find(title) != nullptr; });
    return Find(title);
}

bool Program::WaitUntilGone(const std::string& title) const {
    return WaitFor([&] { return Find(title) == nullptr; });
}

static std::string BoxText(HWND box) {
    std::string text;
    for (HWND child = nullptr; (child = FindWindowExW(box, child, L"Static", nullptr));) text += WindowText(child);
    return text;
}

bool Program::AnswerBox(const std::string& title, const std::string& text, int button) const {
    const HWND box = WaitForWindow(title);
    EXPECT_TRUE(box) << "no box \"" << title << "\"";
    if (!box) return false;
    EXPECT_EQ(BoxText(box), text);
    // Wine numbers the lone button of an OK box as the Cancel that Esc means.
    Click(box, GetDlgItem(box, button) ? button : IDCANCEL);
    return WaitFor([&] { return !IsWindow(box); });
}

bool Program::AnswerFileDialog(const std::string& title, const std::string& path) const {
    constexpr int nameEdit = 0x480, nameCombo = 0x47C;
    const HWND dialog = WaitForWindow(title);
    EXPECT_TRUE(dialog) << "no dialog \"" << title << "\"";
    if (!dialog) return false;
    SetControlText(dialog, GetDlgItem(dialog, nameEdit) ? nameEdit : nameCombo, path);
    Click(dialog, IDOK);
    return WaitFor([&] { return !IsWindow(dialog); });
}

// --- controls ----------------------------------------------------------------------------------------------------------

std::string WindowText(HWND window) {
    wchar_t text[2048] = L"";
    DWORD_PTR length = 0;  // with a time limit: the program may be busy
    SendMessageTimeoutW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG, 2000, &length);
    return Utf8({text, static_cast<size_t>(length)});
}

std::string ControlText(HWND dialog, int id) { return WindowText(GetDlgItem(dialog, id)); }

bool ControlChecked(HWND dialog, int id) { return SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0) == BST_CHECKED; }

void SetControlText(HWND dialog, int id, const std::string& utf8) {
    SendDlgItemMessageW(dialog, id, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Wide(utf8).c_str()));
}

void Click(HWND dialog, int id) { PostMessageW(GetDlgItem(dialog, id), BM_CLICK, 0, 0); }

std::string IniValue(const std::string& ini, const std::string& section, const std::string& key) {
    wchar_t value[512] = L"";
    GetPrivateProfileStringW(Wide(section).c_str(), Wide(key).c_str(), L"", value, std::size(value), Wide(ini).c_str());
    return Utf8(value);
}

size_t ControlsInPlace(HWND dialog) {
    RECT client, taken, common;
    GetClientRect(dialog, &client);
    std::vector<RECT> places;
    for (HWND control = GetWindow(dialog, GW_CHILD); control; control = GetWindow(control, GW_HWNDNEXT)) {
        if (!IsWindowVisible(control)) continue;
        GetWindowRect(control, &taken);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&taken), 2);
        SCOPED_TRACE(WindowText(control) + " " + std::to_string(GetDlgCtrlID(control)));
        EXPECT_TRUE(taken.left >= 0 && taken.top >= 0 && taken.right <= client.right && taken.bottom <= client.bottom);
        for (const RECT& place : places) EXPECT_FALSE(IntersectRect(&common, &place, &taken));
        places.push_back(taken);
    }
    return places.size();
}
