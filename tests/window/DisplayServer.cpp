#include "window/DisplayServer.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <initializer_list>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace
{
constexpr std::chrono::seconds longestStart { 30 };
constexpr std::chrono::milliseconds betweenLooks { 10 };

// Display 0 is what the framework takes where DISPLAY is not set: a test of another process without a display would
// come to this one, and end with it.
constexpr int firstNumber = 1000;
constexpr int numberCount = 40000;
constexpr int attempts = 20;
constexpr int betweenAttempts = 1009;

/** Starts a program that ends with this process. Its words go nowhere. */
pid_t start (const std::vector<std::string>& words, int keptDescriptor = -1)
{
    std::vector<char*> arguments;

    for (const auto& word : words)
        arguments.push_back (const_cast<char*> (word.c_str()));

    arguments.push_back (nullptr);

    const auto child = fork();

    if (child != 0)
        return child;

    prctl (PR_SET_PDEATHSIG, SIGTERM);
    const auto nowhere = open ("/dev/null", O_RDWR);
    dup2 (nowhere, STDIN_FILENO);
    dup2 (nowhere, STDOUT_FILENO);
    dup2 (nowhere, STDERR_FILENO);

    if (keptDescriptor >= 0)
        fcntl (keptDescriptor, F_SETFD, 0);

    execvp (arguments.front(), arguments.data());
    _exit (127);
}

void end (pid_t child)
{
    if (child <= 0)
        return;

    kill (child, SIGTERM);
    waitpid (child, nullptr, 0);
}

/** Whether a window manager has said that it is there. */
bool isManaged (const std::string& displayName)
{
    auto* display = XOpenDisplay (displayName.c_str());

    if (display == nullptr)
        return false;

    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* value = nullptr;
    const auto property = XInternAtom (display, "_NET_SUPPORTING_WM_CHECK", False);
    XGetWindowProperty (
        display, DefaultRootWindow (display), property, 0, 1, False, XA_WINDOW, &type, &format, &count, &left, &value);

    if (value != nullptr)
        XFree (value);

    XCloseDisplay (display);
    return count == 1;
}
} // namespace

DisplayServer::DisplayServer (int width, int height)
{
    const auto screen = std::to_string (width) + "x" + std::to_string (height) + "x24";

    for (int attempt = 0; displayName.empty() && attempt < attempts; ++attempt)
        startServer (firstNumber + (getpid() + attempt * betweenAttempts) % numberCount, screen);

    if (displayName.empty())
        throw std::runtime_error ("Xvfb did not start");

    setenv ("DISPLAY", displayName.c_str(), 1);
    windowManager = start ({ "openbox", "--sm-disable" });

    const auto latest = std::chrono::steady_clock::now() + longestStart;

    while (! isManaged (displayName))
    {
        if (std::chrono::steady_clock::now() > latest)
        {
            end (windowManager);
            end (server);
            throw std::runtime_error ("openbox did not start");
        }

        std::this_thread::sleep_for (betweenLooks);
    }
}

void DisplayServer::startServer (int number, const std::string& screen)
{
    int ends[2];

    if (pipe2 (ends, O_CLOEXEC) != 0)
        throw std::runtime_error ("no pipe for the display's number");

    std::string wanted (1, ':');
    wanted.append (std::to_string (number));
    server = start ({ "Xvfb",
                      wanted,
                      "-displayfd",
                      std::to_string (ends[1]),
                      "-screen",
                      "0",
                      screen,
                      "-noreset",
                      "-nolisten",
                      "tcp" },
                    ends[1]);
    close (ends[1]);

    // The server writes its number when it is ready, and nothing if the number is taken. It writes in pieces, and ends
    // if nobody reads the last one.
    auto ready = false;

    for (char character = 0; read (ends[0], &character, 1) == 1 && character != '\n';)
        ready = true;

    close (ends[0]);

    if (ready)
        displayName = wanted;
    else
        end (std::exchange (server, -1));
}

DisplayServer::~DisplayServer()
{
    end (windowManager);
    end (server);
    unsetenv ("DISPLAY");
}
