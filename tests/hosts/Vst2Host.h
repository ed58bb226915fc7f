#pragma once

#include "hosts/SharedLibrary.h"

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

struct AEffect;

/** A host for one instance of a plug-in with the classic 2.4 interface, for tests and benchmarks: no window, no thread
   of its own. Any thread may call, but for processing, which belongs to one at a time.

    A library that cannot be loaded, or that makes no instance, throws std::runtime_error. */
class Vst2Host
{
public:
    explicit Vst2Host (const std::string& libraryPath);

    /** Closes the instance, and unloads the library when this was its last. */
    ~Vst2Host();

    Vst2Host (const Vst2Host&) = delete;
    Vst2Host& operator= (const Vst2Host&) = delete;

    //==================================================================================================================
    /** What the plug-in hears when it asks whether it renders offline. Takes effect at the next prepare(). */
    void setOffline (bool offlineToTell) noexcept { offline = offlineToTell; }

    /** Asks for as many channels in as out, up to eight; false if the plug-in refuses. While it is not prepared. */
    bool setChannelCount (int count);

    /** Announces rate and largest block, and switches the plug-in off and on. */
    void prepare (double sampleRate, int maxBlock);

    void suspend();

    /** One block. Channels that the plug-in has beyond `channelCount` get silence, and what they give is dropped. */
    void process (const float* const* input, float* const* output, int channelCount, int frameCount);

    /** The interface's own call, with whatever it is given. */
    void processAsGiven (float** input, float** output, int frameCount);

    /** The delay that the plug-in reports, in samples. */
    [[nodiscard]] int latency() const noexcept;

    /** The host's switch for bypass; returns what the plug-in answers. */
    std::intptr_t setBypass (bool shouldBypass);

    /** Called when the plug-in wants its window to have another size, in pixels, on the thread that handles its events.
        Without one the host refuses. Before the window opens. */
    void setSizeHandler (std::function<void (int width, int height)> handler) { sizeHandler = std::move (handler); }

    //==================================================================================================================
    [[nodiscard]] int parameterCount() const noexcept;
    [[nodiscard]] std::string parameterName (int index) const;
    [[nodiscard]] std::string parameterLabel (int index) const;
    [[nodiscard]] std::string parameterText (int index) const;
    [[nodiscard]] float parameter (int index) const;
    void setParameter (int index, float normalised);

    /** The index of the parameter of this name, or -1. */
    [[nodiscard]] int findParameter (const std::string& name) const;

    [[nodiscard]] std::vector<char> chunk() const;
    void setChunk (const std::vector<char>& bytes);

    //==================================================================================================================
    [[nodiscard]] std::int32_t uniqueId() const noexcept;
    [[nodiscard]] std::int32_t version() const noexcept;
    [[nodiscard]] int inputCount() const noexcept;
    [[nodiscard]] int outputCount() const noexcept;
    [[nodiscard]] std::string effectName() const;
    [[nodiscard]] std::string vendor() const;
    [[nodiscard]] bool canDo (const std::string& what) const;

    /** Any call of the interface by its number. */
    std::intptr_t
    dispatch (int opcode, int index = 0, std::intptr_t value = 0, void* pointer = nullptr, float option = 0.0f) const;

    /** What the plug-in says of a hand on its controls: a gesture begins, a parameter changes, a gesture ends. */
    struct Edit
    {
        enum class Kind
        {
            begin,
            change,
            end
        };

        Kind kind;
        int index;

        /** Normalised; 0 where nothing changes. */
        float value;
    };

    /** All that it has said since the last call, in order. */
    std::vector<Edit> takeEdits();

    /** How often the plug-in has called the host with this number. */
    [[nodiscard]] int callCount (int hostOpcode) const;

    /** Waits until the plug-in has called with this number more than `before` times; false if it does not in time. */
    [[nodiscard]] bool waitForCall (int hostOpcode, int before, std::chrono::seconds longest) const;

private:
    struct TimeInfo;

    static std::intptr_t
    hostCallback (AEffect* effect, int opcode, int index, std::intptr_t value, void* const pointer, float option);
    std::intptr_t answer (int opcode, int index, std::intptr_t value, void* pointer);
    void noteEdit (int opcode, int index, float value);
    const TimeInfo& currentTime() noexcept;
    [[nodiscard]] std::string text (int opcode, int index) const;
    [[nodiscard]] static std::size_t placeOf (int hostOpcode) noexcept;

    /** Numbers above the interface's own, as from headers that invent them, are counted in the last place. */
    static constexpr std::size_t countedOpcodes = 128;

    const SharedLibrary library;
    AEffect* effect = nullptr;
    std::atomic<bool> offline { false };
    std::function<void (int, int)> sizeHandler;
    double rate = 44100.0;
    int blockSize = 512;
    std::int64_t position = 0;
    std::unique_ptr<TimeInfo> timeInfo;
    std::vector<float> silence;
    std::vector<std::vector<float>> dropped;
    std::vector<float*> inputs;
    std::vector<float*> outputs;
    mutable std::mutex callsLock;
    mutable std::condition_variable called;
    std::array<std::atomic<int>, countedOpcodes> calls {};
    std::vector<Edit> edits;
};
