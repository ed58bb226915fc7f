// The library's entry for hosts of the classic interface. The framework's own, which has another name here, trusts its
// host: it writes into buffers that it gave back when the host switched it off, frees them under a block that is being
// processed, and follows every pointer. What a host must not do is stopped before it comes there.
//
// "main", which only hosts before the interface's 2.4 look for, is still the framework's.

#include <pluginterfaces/vst2.x/aeffectx.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <thread>

extern "C" AEffect* solvane_framework_vst2_main (audioMasterCallback host);
extern "C" __attribute__ ((visibility ("default"))) AEffect* VSTPluginMain (audioMasterCallback host);

namespace
{
// Numbers of the interface's calls that follow a pointer without looking, and of those that the guard has to know.
constexpr int close = 1;
constexpr int switchOnOrOff = 12;
constexpr int editorRectangle = 13;
constexpr int getChunk = 23;
constexpr int setChunk = 24;
constexpr int inputProperties = 33;
constexpr int outputProperties = 34;
constexpr int setSpeakers = 42;
constexpr int canDo = 51;
constexpr int getSpeakers = 69;

constexpr std::array followingPointers { editorRectangle,  getChunk,    setChunk, inputProperties,
                                         outputProperties, setSpeakers, canDo,    getSpeakers };

/** Stands between a host and one instance.

    The host keeps the framework's record, whose place for the instance now leads here; the framework's functions get a
    copy of that record as it was, and look for nothing else in it. */
class CallGuard
{
public:
    explicit CallGuard (AEffect& record) : effect (record), framework (record)
    {
        effect.object = this;
        effect.dispatcher = dispatch;
        effect.processReplacing = process;
        effect.setParameter = setParameter;
        effect.getParameter = getParameter;
        effect.processDoubleReplacing = processDouble;
    }

    CallGuard (const CallGuard&) = delete;
    CallGuard& operator= (const CallGuard&) = delete;

private:
    static CallGuard& of (AEffect* effect) { return *static_cast<CallGuard*> (effect->object); }

    static t_fstPtrInt dispatch (AEffect* effect, int opcode, int index, t_fstPtrInt value, void* pointer, float option)
    {
        auto& guard = of (effect);

        if (pointer == nullptr && std::ranges::find (followingPointers, opcode) != followingPointers.end())
            return 0;

        if (opcode == switchOnOrOff)
            return guard.switchTo (value != 0);

        const auto answer = guard.call (opcode, index, value, pointer, option);

        if (opcode == setSpeakers && answer != 0 && value != 0)
            guard.noteChannels (*reinterpret_cast<const VstSpeakerArrangement*> (value),
                                *static_cast<const VstSpeakerArrangement*> (pointer));

        if (opcode == close)
            delete &guard;

        return answer;
    }

    t_fstPtrInt call (int opcode, int index, t_fstPtrInt value, void* pointer, float option)
    {
        return framework.dispatcher (&framework, opcode, index, value, pointer, option);
    }

    static void setParameter (AEffect* effect, int index, float value)
    {
        auto& inner = of (effect).framework;
        inner.setParameter (&inner, index, value);
    }

    static float getParameter (AEffect* effect, int index)
    {
        auto& inner = of (effect).framework;
        return inner.getParameter (&inner, index);
    }

    /** Waits for the block that is being processed; those that come meanwhile pass. */
    t_fstPtrInt switchTo (bool on)
    {
        while (atWork.exchange (true, std::memory_order_acquire))
            std::this_thread::yield();

        off = ! on;
        const auto answer = call (switchOnOrOff, 0, on ? 1 : 0, nullptr, 0.0f);
        atWork.store (false, std::memory_order_release);
        return answer;
    }

    void noteChannels (const VstSpeakerArrangement& in, const VstSpeakerArrangement& out)
    {
        inputs = std::clamp (in.numChannels, 0, effect.numInputs);
        outputs = std::clamp (out.numChannels, 0, effect.numOutputs);
    }

    static void process (AEffect* effect, float** in, float** out, int frames)
    {
        if (in == nullptr || out == nullptr || frames <= 0)
            return;

        auto& guard = of (effect);

        if (guard.atWork.exchange (true, std::memory_order_acquire))
            return guard.pass (in, out, frames);

        if (guard.off || guard.lacksAnInput (in))
            guard.pass (in, out, frames);
        else
            guard.framework.processReplacing (&guard.framework, in, out, frames);

        guard.atWork.store (false, std::memory_order_release);
    }

    /** The plug-in says that it takes no double precision. */
    static void processDouble (AEffect* effect, double** in, double** out, int frames)
    {
        if (in != nullptr && out != nullptr && frames > 0)
            of (effect).pass (in, out, frames);
    }

    [[nodiscard]] bool lacksAnInput (float** in) const
    {
        return std::any_of (in, in + inputs, [] (const float* channel) { return channel == nullptr; });
    }

    /** What came in goes out; a channel that did not come in is silent. */
    template <typename Sample>
    void pass (Sample** in, Sample** out, int frames) const
    {
        for (auto channel = 0; channel < outputs; ++channel)
        {
            const Sample* source = channel < inputs ? in[channel] : nullptr;

            if (out[channel] == nullptr || out[channel] == source)
                continue;

            if (source != nullptr)
                std::copy_n (source, frames, out[channel]);
            else
                std::fill_n (out[channel], frames, Sample {});
        }
    }

    AEffect& effect;
    AEffect framework;
    int inputs = effect.numInputs;
    int outputs = effect.numOutputs;

    /** Somebody is inside the instance: a block, or a switching. */
    std::atomic<bool> atWork { false };

    /** Switched off after having been on. An instance that was never switched on switches itself on. */
    std::atomic<bool> off { false };
};
} // namespace

AEffect* VSTPluginMain (audioMasterCallback host)
{
    if (host == nullptr)
        return nullptr;

    auto* effect = solvane_framework_vst2_main (host);

    if (effect != nullptr)
        new CallGuard (*effect); // NOLINT: the instance's last call deletes it

    return effect;
}
