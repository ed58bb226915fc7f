#pragma once

#include <string>
#include <sys/types.h>

/** A display of this process alone: a virtual X server with a window manager, which the framework needs.

    Both end with this object, or with the process however it ends. DISPLAY is set while it lives. What cannot be
   started throws std::runtime_error. */
class DisplayServer
{
public:
    /** @param width, height  of the screen in pixels */
    DisplayServer (int width, int height);
    ~DisplayServer();

    DisplayServer (const DisplayServer&) = delete;
    DisplayServer& operator= (const DisplayServer&) = delete;

    /** The display's name, such as ":3". */
    [[nodiscard]] const std::string& name() const noexcept { return displayName; }

private:
    /** Leaves `displayName` empty where the number is taken. */
    void startServer (int number, const std::string& screen);

    std::string displayName;
    pid_t server = -1;
    pid_t windowManager = -1;
};
