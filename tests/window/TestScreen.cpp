#include "window/TestScreen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <png.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace
{
/** The library ends the process at a mistake, such as a window that has gone; a test should fail instead. */
int passOver (Display*, XErrorEvent*)
{
    return 0;
}
} // namespace

bool Picture::save (const std::string& path) const
{
    const std::unique_ptr<std::FILE, int (*) (std::FILE*)> file (std::fopen (path.c_str(), "wb"), &std::fclose);

    if (file == nullptr)
        return false;

    std::vector<std::uint8_t> bytes;
    bytes.reserve (pixels.size() * 3);

    for (const auto pixel : pixels)
        for (const auto shift : { 16, 8, 0 })
            bytes.push_back (static_cast<std::uint8_t> (pixel >> shift));

    png_image image {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32> (width);
    image.height = static_cast<png_uint_32> (height);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_stdio (&image, file.get(), 0, bytes.data(), 0, nullptr) != 0;
}

TestScreen::TestScreen() : connection (XOpenDisplay (nullptr))
{
    if (connection == nullptr)
        throw std::runtime_error ("no display");

    XSetErrorHandler (passOver);
}

TestScreen::~TestScreen()
{
    XCloseDisplay (connection);
}

XWindow TestScreen::makeWindow (int x, int y, int width, int height, bool managed)
{
    const auto window = XCreateSimpleWindow (connection,
                                             DefaultRootWindow (connection),
                                             x,
                                             y,
                                             static_cast<unsigned> (width),
                                             static_cast<unsigned> (height),
                                             0,
                                             0,
                                             0);
    // A window that is not managed has no frame, and stands where it is put.
    XSetWindowAttributes attributes {};
    attributes.override_redirect = managed ? False : True;
    XChangeWindowAttributes (connection, window, CWOverrideRedirect, &attributes);
    XSelectInput (connection, window, StructureNotifyMask);
    XMapRaised (connection, window);

    for (XEvent event {}; event.type != MapNotify;)
        XWindowEvent (connection, window, StructureNotifyMask, &event);

    XSetInputFocus (connection, window, RevertToParent, CurrentTime);
    XSync (connection, False);
    return window;
}

void TestScreen::resizeWindow (XWindow window, int width, int height)
{
    XResizeWindow (connection, window, static_cast<unsigned> (width), static_cast<unsigned> (height));
    XSync (connection, False);
}

void TestScreen::destroyWindow (XWindow window)
{
    XDestroyWindow (connection, window);
    XSync (connection, False);
}

XWindow TestScreen::childOf (XWindow window)
{
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned count = 0;

    if (XQueryTree (connection, window, &root, &parent, &children, &count) == 0 || children == nullptr)
        return 0;

    const auto first = count > 0 ? children[0] : 0;
    XFree (children);
    return first;
}

bool TestScreen::isShown (XWindow window)
{
    XWindowAttributes attributes {};
    return XGetWindowAttributes (connection, window, &attributes) != 0 && attributes.map_state == IsViewable;
}

XWindow TestScreen::findShown (const std::string& title)
{
    return findShownIn (DefaultRootWindow (connection), title);
}

XWindow TestScreen::findShownIn (XWindow parent, const std::string& title)
{
    Window root = 0;
    Window above = 0;
    Window* children = nullptr;
    unsigned count = 0;

    if (XQueryTree (connection, parent, &root, &above, &children, &count) == 0 || children == nullptr)
        return 0;

    XWindow found = 0;

    for (unsigned index = 0; index < count && found == 0; ++index)
    {
        XTextProperty name {};
        XGetWMName (connection, children[index], &name);
        const auto matches =
            name.value != nullptr && title == reinterpret_cast<const char*> (name.value) && isShown (children[index]);

        if (name.value != nullptr)
            XFree (name.value);

        found = matches ? children[index] : findShownIn (children[index], title);
    }

    XFree (children);
    return found;
}

void TestScreen::askToClose (XWindow window)
{
    XEvent event {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom (connection, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long> (XInternAtom (connection, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent (connection, window, False, NoEventMask, &event);
    finish();
}

TestScreen::Place TestScreen::placeOf (XWindow window)
{
    Place place {};
    Window child = 0;
    XTranslateCoordinates (connection, window, DefaultRootWindow (connection), 0, 0, &place.x, &place.y, &child);
    return place;
}

TestScreen::Size TestScreen::sizeOf (XWindow window)
{
    XWindowAttributes attributes {};
    XGetWindowAttributes (connection, window, &attributes);
    return { attributes.width, attributes.height };
}

Picture TestScreen::look (XWindow window)
{
    const auto place = placeOf (window);
    const auto size = sizeOf (window);
    // From the screen itself, so that the plug-in's own window inside is seen as well.
    const std::unique_ptr<XImage, void (*) (XImage*)> image (XGetImage (connection,
                                                                        DefaultRootWindow (connection),
                                                                        place.x,
                                                                        place.y,
                                                                        static_cast<unsigned> (size.width),
                                                                        static_cast<unsigned> (size.height),
                                                                        AllPlanes,
                                                                        ZPixmap),
                                                             [] (XImage* taken) { XDestroyImage (taken); });
    Picture picture { size.width, size.height, {} };

    if (image == nullptr)
        throw std::runtime_error ("nothing could be read from the screen");

    picture.pixels.reserve (static_cast<std::size_t> (size.width) * static_cast<std::size_t> (size.height));

    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            picture.pixels.push_back (static_cast<std::uint32_t> (XGetPixel (image.get(), x, y)) & 0xffffffu);

    return picture;
}

void TestScreen::point (int x, int y)
{
    XTestFakeMotionEvent (connection, -1, x, y, CurrentTime);
    finish();
}

void TestScreen::press (unsigned button)
{
    XTestFakeButtonEvent (connection, button, True, CurrentTime);
    finish();
}

void TestScreen::release (unsigned button)
{
    XTestFakeButtonEvent (connection, button, False, CurrentTime);
    finish();
}

void TestScreen::keyDown (const std::string& name)
{
    XTestFakeKeyEvent (connection, XKeysymToKeycode (connection, XStringToKeysym (name.c_str())), True, CurrentTime);
    finish();
}

void TestScreen::keyUp (const std::string& name)
{
    XTestFakeKeyEvent (connection, XKeysymToKeycode (connection, XStringToKeysym (name.c_str())), False, CurrentTime);
    finish();
}

void TestScreen::finish()
{
    XSync (connection, False);
}
