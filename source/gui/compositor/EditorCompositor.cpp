#include "gui/compositor/EditorCompositor.h"

#include "gui/compositor/GraphicsCard.h"

#include <juce_opengl/juce_opengl.h>

namespace
{
/** A second: a context that is to come has come by then. */
constexpr int patienceTicks = 25;
} // namespace

class EditorCompositor::Context final : private juce::OpenGLRenderer
{
public:
    explicit Context (juce::Component& component)
    {
        openGLContext.setRenderer (this);
        openGLContext.setComponentPaintingEnabled (true);
        openGLContext.setContinuousRepainting (false);
        openGLContext.attachTo (component);
    }

    ~Context() override { openGLContext.detach(); }

    [[nodiscard]] bool works() const noexcept { return openGLContext.getRawContext() != nullptr; }

private:
    void newOpenGLContextCreated() override {}
    void renderOpenGL() override {}
    void openGLContextClosing() override {}

    juce::OpenGLContext openGLContext;
};

EditorCompositor::EditorCompositor (juce::Component& component) : window (component)
{
    const auto hasDisplay = ! juce::Desktop::getInstance().getDisplays().displays.isEmpty();

    if (hasDisplay && GraphicsCard::isThere())
        context = std::make_unique<Context> (component);
}

EditorCompositor::~EditorCompositor() = default;

void EditorCompositor::check()
{
    if (context == nullptr || ! window.isShowing() || context->works())
    {
        ticksWithoutContext = 0;
        return;
    }

    if (++ticksWithoutContext >= patienceTicks)
        detach();
}

void EditorCompositor::detach()
{
    context.reset();
    window.repaint();
}

bool EditorCompositor::isAttached() const
{
    return context != nullptr;
}
