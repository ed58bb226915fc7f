#include "gui/room/ParameterWatch.h"

/** One parameter's mark. */
class ParameterWatch::Slot final : private juce::AudioProcessorValueTreeState::Listener
{
public:
    Slot (ParameterWatch& watch, juce::AudioProcessorValueTreeState& treeToWatch, const juce::String& idToWatch)
        : owner (watch), tree (treeToWatch), id (idToWatch)
    {
        tree.addParameterListener (id, this);
    }

    ~Slot() override { tree.removeParameterListener (id, this); }

    Slot (const Slot&) = delete;
    Slot& operator= (const Slot&) = delete;

    std::atomic<bool> marked { false };

private:
    void parameterChanged (const juce::String&, float) override
    {
        marked = true;
        owner.anyMarked = true;

        if (juce::MessageManager::existsAndIsCurrentThread())
            owner.serve();
    }

    ParameterWatch& owner;
    juce::AudioProcessorValueTreeState& tree;
    const juce::String id;
};

ParameterWatch::ParameterWatch (juce::AudioProcessorValueTreeState& tree,
                                const juce::StringArray& ids,
                                std::function<void (int)> changedToUse)
    : changed (std::move (changedToUse))
{
    for (const auto& id : ids)
        slots.push_back (std::make_unique<Slot> (*this, tree, id));
}

ParameterWatch::~ParameterWatch()
{
    slots.clear();
    cancelPendingUpdate();
}

void ParameterWatch::serve()
{
    if (anyMarked.exchange (false))
        triggerAsyncUpdate();
}

void ParameterWatch::handleAsyncUpdate()
{
    for (std::size_t i = 0; i < slots.size(); ++i)
        if (slots[i]->marked.exchange (false))
            changed (static_cast<int> (i));
}
