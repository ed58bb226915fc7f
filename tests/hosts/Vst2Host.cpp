#include "hosts/Vst2Host.h"

#include <pluginterfaces/vst2.x/aeffectx.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace
{
/** Room for any text; the interface's own limits are much shorter, and plug-ins overstep them. */
constexpr std::size_t textCapacity = 512;

constexpr std::intptr_t interfaceVersion = 2400;
constexpr int offlineProcessLevel = 4;
constexpr int realtimeProcessLevel = 2;

/** The plug-in calls back while its entry function still runs, when no instance is known. */
thread_local Vst2Host* hostBeingOpened = nullptr;

using EntryFunction = AEffect* (*) (audioMasterCallback);

VstSpeakerArrangement arrangementFor (int channelCount)
{
    VstSpeakerArrangement arrangement {};
    arrangement.type = channelCount == 1   ? kSpeakerArrMono
                       : channelCount == 2 ? kSpeakerArrStereo
                                           : kSpeakerArrUserDefined;
    arrangement.numChannels = channelCount;

    for (int channel = 0; channel < channelCount; ++channel)
        arrangement.speakers[channel].type = channelCount == 1 ? kSpeakerM : kSpeakerL + channel;

    return arrangement;
}
} // namespace

struct Vst2Host::TimeInfo : VstTimeInfo
{
};

Vst2Host::Vst2Host (const std::string& libraryPath) : library (libraryPath), timeInfo (std::make_unique<TimeInfo>())
{
    hostBeingOpened = this;
    effect = library.function<EntryFunction> ("VSTPluginMain") (hostCallback);
    hostBeingOpened = nullptr;

    if (effect == nullptr || effect->magic != kEffectMagic)
        throw std::runtime_error ("no plug-in in " + libraryPath);

    effect->user = this;
    dispatch (effOpen);
}

Vst2Host::~Vst2Host()
{
    suspend();
    dispatch (effClose);
}

bool Vst2Host::setChannelCount (int count)
{
    auto input = arrangementFor (count);
    auto output = arrangementFor (count);
    return dispatch (effSetSpeakerArrangement, 0, reinterpret_cast<std::intptr_t> (&input), &output) != 0;
}

void Vst2Host::prepare (double sampleRate, int maxBlock)
{
    suspend();
    rate = sampleRate;
    blockSize = maxBlock;
    position = 0;
    dispatch (effSetSampleRate, 0, 0, nullptr, static_cast<float> (sampleRate));
    dispatch (effSetBlockSize, 0, maxBlock);
    dispatch (effMainsChanged, 0, 1);
}

void Vst2Host::suspend()
{
    dispatch (effMainsChanged, 0, 0);
}

void Vst2Host::process (const float* const* input, float* const* output, int channelCount, int frameCount)
{
    const auto frames = static_cast<std::size_t> (frameCount);
    const auto inputTotal = static_cast<std::size_t> (inputCount());
    const auto outputTotal = static_cast<std::size_t> (outputCount());
    const auto given = static_cast<std::size_t> (channelCount);

    if (silence.size() < frames || dropped.size() < outputTotal)
    {
        silence.assign (frames, 0.0f);
        dropped.assign (outputTotal, std::vector<float> (frames));
    }

    inputs.resize (inputTotal);
    outputs.resize (outputTotal);

    for (std::size_t channel = 0; channel < inputTotal; ++channel)
        inputs[channel] = channel < given ? const_cast<float*> (input[channel]) : silence.data();

    for (std::size_t channel = 0; channel < outputTotal; ++channel)
        outputs[channel] = channel < given ? output[channel] : dropped[channel].data();

    effect->processReplacing (effect, inputs.data(), outputs.data(), frameCount);
    position += frameCount;
}

void Vst2Host::processAsGiven (float** input, float** output, int frameCount)
{
    effect->processReplacing (effect, input, output, frameCount);
}

int Vst2Host::latency() const noexcept
{
    return effect->initialDelay;
}

std::intptr_t Vst2Host::setBypass (bool shouldBypass)
{
    return dispatch (effSetBypass, 0, shouldBypass ? 1 : 0);
}

int Vst2Host::parameterCount() const noexcept
{
    return effect->numParams;
}

std::string Vst2Host::parameterName (int index) const
{
    return text (effGetParamName, index);
}

std::string Vst2Host::parameterLabel (int index) const
{
    return text (effGetParamLabel, index);
}

std::string Vst2Host::parameterText (int index) const
{
    return text (effGetParamDisplay, index);
}

float Vst2Host::parameter (int index) const
{
    return effect->getParameter (effect, index);
}

void Vst2Host::setParameter (int index, float normalised)
{
    effect->setParameter (effect, index, normalised);
}

int Vst2Host::findParameter (const std::string& name) const
{
    for (int index = 0; index < parameterCount(); ++index)
        if (parameterName (index) == name)
            return index;

    return -1;
}

std::vector<char> Vst2Host::chunk() const
{
    char* bytes = nullptr;
    const auto size = dispatch (effGetChunk, 0, 0, &bytes);
    return bytes != nullptr ? std::vector<char> (bytes, bytes + size) : std::vector<char> {};
}

void Vst2Host::setChunk (const std::vector<char>& bytes)
{
    auto copy = bytes;
    dispatch (effSetChunk, 0, static_cast<std::intptr_t> (copy.size()), copy.data());
}

std::int32_t Vst2Host::uniqueId() const noexcept
{
    return effect->uniqueID;
}

std::int32_t Vst2Host::version() const noexcept
{
    return effect->version;
}

int Vst2Host::inputCount() const noexcept
{
    return effect->numInputs;
}

int Vst2Host::outputCount() const noexcept
{
    return effect->numOutputs;
}

std::string Vst2Host::effectName() const
{
    return text (effGetEffectName, 0);
}

std::string Vst2Host::vendor() const
{
    return text (effGetVendorString, 0);
}

bool Vst2Host::canDo (const std::string& what) const
{
    auto copy = what;
    return dispatch (effCanDo, 0, 0, copy.data()) == 1;
}

std::intptr_t Vst2Host::dispatch (int opcode, int index, std::intptr_t value, void* pointer, float option) const
{
    return effect->dispatcher (effect, opcode, index, value, pointer, option);
}

std::vector<Vst2Host::Edit> Vst2Host::takeEdits()
{
    const std::lock_guard lock (callsLock);
    return std::exchange (edits, {});
}

int Vst2Host::callCount (int hostOpcode) const
{
    return calls[placeOf (hostOpcode)];
}

bool Vst2Host::waitForCall (int hostOpcode, int before, std::chrono::seconds longest) const
{
    std::unique_lock lock (callsLock);
    return called.wait_for (lock, longest, [&] { return callCount (hostOpcode) > before; });
}

std::size_t Vst2Host::placeOf (int hostOpcode) noexcept
{
    return hostOpcode >= 0 ? std::min (static_cast<std::size_t> (hostOpcode), countedOpcodes - 1) : countedOpcodes - 1;
}

std::string Vst2Host::text (int opcode, int index) const
{
    std::array<char, textCapacity> characters {};
    dispatch (opcode, index, 0, characters.data());
    return { characters.data(), strnlen (characters.data(), characters.size()) };
}

std::intptr_t
Vst2Host::hostCallback (AEffect* caller, int opcode, int index, std::intptr_t value, void* const pointer, float option)
{
    auto* host = caller != nullptr && caller->user != nullptr ? static_cast<Vst2Host*> (caller->user) : hostBeingOpened;

    if (host == nullptr)
        return opcode == audioMasterVersion ? interfaceVersion : 0;

    host->noteEdit (opcode, index, option);
    return host->answer (opcode, index, value, pointer);
}

void Vst2Host::noteEdit (int opcode, int index, float value)
{
    if (opcode != audioMasterBeginEdit && opcode != audioMasterAutomate && opcode != audioMasterEndEdit)
        return;

    const auto kind = opcode == audioMasterBeginEdit ? Edit::Kind::begin
                      : opcode == audioMasterEndEdit ? Edit::Kind::end
                                                     : Edit::Kind::change;
    const std::lock_guard lock (callsLock);
    edits.push_back ({ kind, index, kind == Edit::Kind::change ? value : 0.0f });
}

std::intptr_t Vst2Host::answer (int opcode, int index, std::intptr_t value, void* pointer)
{
    ++calls[placeOf (opcode)];

    // The audio thread asks for the time in every block, and nobody waits for that.
    if (opcode == audioMasterGetTime)
        return reinterpret_cast<std::intptr_t> (&currentTime());

    {
        const std::lock_guard lock (callsLock);
    }

    called.notify_all();

    switch (opcode)
    {
        case audioMasterVersion:
            return interfaceVersion;

        case audioMasterCanDo:
            return sizeHandler != nullptr && std::strcmp (static_cast<const char*> (pointer), "sizeWindow") == 0 ? 1
                                                                                                                 : 0;

        case audioMasterSizeWindow:
            if (sizeHandler == nullptr)
                return 0;

            sizeHandler (index, static_cast<int> (value));
            return 1;

        case audioMasterGetSampleRate:
            return static_cast<std::intptr_t> (rate);

        case audioMasterGetBlockSize:
            return blockSize;

        case audioMasterGetCurrentProcessLevel:
            return offline ? offlineProcessLevel : realtimeProcessLevel;

        case audioMasterGetVendorString:
        case audioMasterGetProductString:
            std::strcpy (static_cast<char*> (pointer), "Small host");
            return 1;

        default:
            return 0;
    }
}

const Vst2Host::TimeInfo& Vst2Host::currentTime() noexcept
{
    static_cast<VstTimeInfo&> (*timeInfo) = {};
    timeInfo->samplePos = static_cast<double> (position);
    timeInfo->sampleRate = rate;
    timeInfo->tempo = 120.0;
    timeInfo->ppqPos = timeInfo->samplePos / rate * 2.0;
    timeInfo->timeSigNumerator = 4;
    timeInfo->timeSigDenominator = 4;
    timeInfo->flags = kVstTransportPlaying | kVstTempoValid | kVstPpqPosValid | kVstTimeSigValid;
    return *timeInfo;
}
