// The command `render`: one picture of what the window shows.
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/session.h"

constexpr int standardFrames = 200;  // the opening zoom, the fade-in of the traces and the resting panels are over then

struct RenderSize {
    int width = 0, height = 0;  // 0: the settings' client size
};

static bool ReadSize(const std::string& text, RenderSize& size) {
    const size_t cross = text.find('x');
    return cross != std::string::npos && ReadNumber(text.substr(0, cross), 1, largestClient, size.width) &&
           ReadNumber(text.substr(cross + 1), 1, largestClient, size.height);
}

int RunRender(const Invocation& invocation) {
    RenderSize size;
    int frames = standardFrames;
    if (const std::string* text = GivenValue(invocation, "--size"); text && !ReadSize(*text, size))
        return Refuse("--size %s: a size is WxH with 1 to %d each, as in 1920x1080", text->c_str(), largestClient);
    if (const std::string* text = GivenValue(invocation, "--frames"); text && !ReadNumber(*text, 1, mostPasses, frames))
        return Refuse("--frames %s: frames are a number from 1 to %d", text->c_str(), mostPasses);

    const std::vector<std::string> paths = OperandPaths(invocation);
    if (int status = BeginSession(invocation); status != exitDone) return status;
    if (int status = OpenSessionWindow(size.width, size.height); status != exitDone) return status;
    if (size.width > 0) ScriptClientSize(size.width, size.height);
    const int loaded = LoadLogs(invocation, std::span(paths).subspan(1));
    if (const std::string* keys = GivenValue(invocation, "--keys"))
        for (const char key : *keys) ScriptChar(static_cast<unsigned char>(key));
    RunPasses(frames);
    const int saved = SavePicture(paths[0]);
    EndSession(invocation);
    return std::max(loaded, saved);
}
