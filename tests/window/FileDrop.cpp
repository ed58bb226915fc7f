#include "window/FileDrop.h"

#include <X11/Xlib.h>

#include <cstring>
#include <stdexcept>

namespace
{
/** The framework speaks no later one. */
constexpr long protocolVersion = 3;

/** One drop: a window that nobody sees, which the two programs write to each other by. */
class Source
{
public:
    Source (PluginWindow& windowToServe, const std::vector<std::string>& paths)
        : window (windowToServe),
          display (window.screen().display()),
          target (window.screen().childOf (window.handle())),
          source (XCreateSimpleWindow (display, DefaultRootWindow (display), 0, 0, 1, 1, 0, 0, 0))
    {
        for (const auto& path : paths)
            names += "file://" + path + "\r\n";

        XSetSelectionOwner (display, atom ("XdndSelection"), source, CurrentTime);
    }

    ~Source()
    {
        XDestroyWindow (display, source);
        XSync (display, False);
    }

    Source (const Source&) = delete;
    Source& operator= (const Source&) = delete;

    void enter() { send ("XdndEnter", { protocolVersion << 24, static_cast<long> (atom ("text/uri-list")), 0, 0 }); }

    void pointAt (int x, int y)
    {
        const auto place = window.screen().placeOf (window.handle());
        send ("XdndPosition",
              { 0,
                static_cast<long> (place.x + x) << 16 | (place.y + y),
                CurrentTime,
                static_cast<long> (atom ("XdndActionCopy")) });
        await ("XdndStatus");
    }

    void drop()
    {
        send ("XdndDrop", { 0, CurrentTime, 0, 0 });
        await ("XdndFinished");
    }

private:
    [[nodiscard]] Atom atom (const char* name) const { return XInternAtom (display, name, False); }

    void send (const char* message, const std::array<long, 4>& data)
    {
        XEvent event {};
        event.xclient.type = ClientMessage;
        event.xclient.window = target;
        event.xclient.message_type = atom (message);
        event.xclient.format = 32;
        event.xclient.data.l[0] = static_cast<long> (source);

        for (std::size_t i = 0; i < data.size(); ++i)
            event.xclient.data.l[i + 1] = data[i];

        XSendEvent (display, target, False, 0, &event);
        XSync (display, False);
    }

    void await (const char* message)
    {
        auto answered = false;

        if (! window.eventually (
                [&]
                {
                    answered = serve (atom (message)) || answered;
                    return answered;
                },
                std::chrono::seconds (10)))
            throw std::runtime_error (std::string ("the plug-in does not say ") + message);
    }

    /** Hands the names over if they are asked for. @returns whether the message has come */
    bool serve (Atom message)
    {
        XEvent event {};

        while (XCheckTypedWindowEvent (display, source, SelectionRequest, &event) != 0)
            handOver (event.xselectionrequest);

        while (XCheckTypedWindowEvent (display, source, ClientMessage, &event) != 0)
            if (event.xclient.message_type == message)
                return true;

        return false;
    }

    void handOver (const XSelectionRequestEvent& request)
    {
        XChangeProperty (display,
                         request.requestor,
                         request.property,
                         request.target,
                         8,
                         PropModeReplace,
                         reinterpret_cast<const unsigned char*> (names.data()),
                         static_cast<int> (names.size()));
        XEvent answer {};
        answer.xselection.type = SelectionNotify;
        answer.xselection.requestor = request.requestor;
        answer.xselection.selection = request.selection;
        answer.xselection.target = request.target;
        answer.xselection.property = request.property;
        answer.xselection.time = request.time;
        XSendEvent (display, request.requestor, False, 0, &answer);
        XSync (display, False);
    }

    PluginWindow& window;
    XDisplay* const display;
    const XWindow target;
    const XWindow source;
    std::string names;
};
} // namespace

void FileDrop::drop (PluginWindow& window, int x, int y, const std::vector<std::string>& paths)
{
    Source source (window, paths);
    source.enter();

    // The names are asked for at the first place that is new.
    source.pointAt (x - 1, y);
    source.pointAt (x, y);
    source.drop();
}
