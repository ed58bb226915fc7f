#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <memory>

/** Puts a window's pictures together on the graphics card, where there is one. Nothing is drawn with shaders, and
   without it, or when it fails, the window paints as it does anyway. Message thread. */
class EditorCompositor
{
public:
    /** @param component the whole window; outlives this object */
    explicit EditorCompositor (juce::Component& component);
    ~EditorCompositor();

    EditorCompositor (const EditorCompositor&) = delete;
    EditorCompositor& operator= (const EditorCompositor&) = delete;

    /** One tick of the editor's timer. A context that could not be made leaves its component with an empty picture, so
        it is let go once the window has been showing for a while without one. */
    void check();

    /** Lets the graphics card go. */
    void detach();

    [[nodiscard]] bool isAttached() const;

private:
    class Context;

    juce::Component& window;
    std::unique_ptr<Context> context;
    int ticksWithoutContext = 0;
};
