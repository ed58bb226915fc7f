#pragma once

#include "core/PluginProcessor.h"

#include <juce_events/juce_events.h>

#include <array>
#include <functional>
#include <mutex>
#include <optional>

/** Keeps the target curve of the room, and what is known about its readiness, in step with the analysis.

    The analysis thread leaves what a pass has found in a mailbox with one place; the message thread makes the curve
   from it. A pass that moved nothing leaves nothing, so a silent instance causes no message. Construct and destroy on
   the message thread. */
class TargetRefresh final : private juce::AsyncUpdater
{
public:
    explicit TargetRefresh (VelmoraAudioProcessor& processor);
    ~TargetRefresh() override;

    /** Makes the curve anew where the rows or the targets have changed, and declares the target and the smart bands
        ready once it moves slowly enough. Without a target nothing happens. Message thread. */
    void refresh();

    /** The same, and the curve in any case: for another height, preset, or session. Message thread. */
    void rebuild();

    /** The same after what was measured has been forgotten: what a pass has found before counts no more. Message
        thread. */
    void startAnew();

private:
    /** What the last passes found that nobody has seen yet. */
    struct Findings
    {
        float maxChange = 0.0f;
        bool moved = false;
        std::array<float, analysisBandCount> targets {};
    };

    void handleAsyncUpdate() override { refresh(); }
    void passEnded();
    [[nodiscard]] std::array<float, analysisBandCount> readTargets() const;
    [[nodiscard]] std::optional<Findings> takeFindings();
    void storeCurve (const std::array<float, analysisBandCount>& targets);
    void declareReady (float maxChange);

    VelmoraAudioProcessor& processor;
    PluginModel& model;
    std::mutex mailboxLock;
    std::optional<Findings> mailbox;
    int subscription = 0;
};
