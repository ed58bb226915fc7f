#include "gui/compositor/GraphicsCard.h"

#include <GL/glx.h>

#include <array>
#include <string_view>
#include <unistd.h>

namespace
{
/** An X connection for as long as it lives. */
class Connection
{
public:
    Connection() : display (::XOpenDisplay (nullptr)) {}

    ~Connection()
    {
        if (display != nullptr)
            ::XCloseDisplay (display);
    }

    Connection (const Connection&) = delete;
    Connection& operator= (const Connection&) = delete;

    Display* const display;
};

/** Whether there is a configuration such as the framework looks for. Without one it would crash. */
bool hasConfiguration (Display* display)
{
    constexpr std::array attributes { GLX_RENDER_TYPE,        GLX_RGBA_BIT,
                                      GLX_DOUBLEBUFFER,       True,
                                      GLX_RED_SIZE,           8,
                                      GLX_GREEN_SIZE,         8,
                                      GLX_BLUE_SIZE,          8,
                                      GLX_ALPHA_SIZE,         8,
                                      GLX_DEPTH_SIZE,         16,
                                      GLX_STENCIL_SIZE,       8,
                                      static_cast<int> (None) };
    auto count = 0;

    if (auto* configurations = ::glXChooseFBConfig (display, DefaultScreen (display), attributes.data(), &count))
        ::XFree (configurations);

    return count > 0;
}

/** Whether the machine has a device to draw with. Asking the display loads its driver, which takes a while and, in
   some, leaves memory behind each time. */
bool machineHasOne()
{
#if defined(__linux__)
    return ::access ("/dev/dri", F_OK) == 0 || ::access ("/dev/nvidiactl", F_OK) == 0;
#else
    return true;
#endif
}

bool displayHasOne()
{
    const Connection connection;
    auto base = 0;

    if (connection.display == nullptr || ::glXQueryExtension (connection.display, &base, &base) == False
        || ! hasConfiguration (connection.display))
        return false;

    // Drivers of one family say by themselves whether they draw on the processor; the others only exist for cards.
    const auto* extensions = ::glXQueryExtensionsString (connection.display, DefaultScreen (connection.display));
    const std::string_view known (extensions != nullptr ? extensions : "");

    if (known.find ("GLX_MESA_query_renderer") == std::string_view::npos)
        return true;

    const auto* name = reinterpret_cast<const GLubyte*> ("glXQueryRendererIntegerMESA");
    const auto query = reinterpret_cast<PFNGLXQUERYRENDERERINTEGERMESAPROC> (::glXGetProcAddressARB (name));
    auto accelerated = 0u;
    return query != nullptr
           && query (connection.display,
                     DefaultScreen (connection.display),
                     0,
                     GLX_RENDERER_ACCELERATED_MESA,
                     &accelerated)
                  == True
           && accelerated != 0;
}
} // namespace

bool GraphicsCard::isThere()
{
    static const auto answer = machineHasOne() && displayHasOne();
    return answer;
}
