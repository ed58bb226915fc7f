#pragma once

// Stands before the system's header on the include path and mends what hosts would trip over.
//
// The free headers give every opcode and flag whose number their authors had not seen in the wild a number of its own
// above 100000, so that a plug-in built on them alone never hears a host's bypass call, and a host never hears of a
// change of latency. The names are moved out of the way while the system's header is read, and come back below with
// the numbers that hosts send and expect. The speaker list, a flexible array there, gets the eight entries that the
// framework's code counts on.

#define effEditTop fstUnnumberedEffEditTop
#define effConnectInput fstUnnumberedEffConnectInput
#define effConnectOutput fstUnnumberedEffConnectOutput
#define effSetBypass fstUnnumberedEffSetBypass
#define effGetTailSize fstUnnumberedEffGetTailSize
#define effIdle fstUnnumberedEffIdle
#define effKeysRequired fstUnnumberedEffKeysRequired
#define effGetNumMidiInputChannels fstUnnumberedEffGetNumMidiInputChannels
#define effGetNumMidiOutputChannels fstUnnumberedEffGetNumMidiOutputChannels

#define audioMasterIOChanged fstUnnumberedAudioMasterIOChanged
#define audioMasterUpdateDisplay fstUnnumberedAudioMasterUpdateDisplay
#define audioMasterVendorSpecific fstUnnumberedAudioMasterVendorSpecific

#define kVstPinIsActive fstUnnumberedPinIsActive
#define kVstPinIsStereo fstUnnumberedPinIsStereo
#define kVstPinUseSpeaker fstUnnumberedPinUseSpeaker

#define kVstSmpte24fps fstUnnumberedSmpte24fps
#define kVstSmpte25fps fstUnnumberedSmpte25fps
#define kVstSmpte2997fps fstUnnumberedSmpte2997fps
#define kVstSmpte30fps fstUnnumberedSmpte30fps
#define kVstSmpte2997dfps fstUnnumberedSmpte2997dfps
#define kVstSmpte30dfps fstUnnumberedSmpte30dfps
#define kVstSmpteFilm16mm fstUnnumberedSmpteFilm16mm
#define kVstSmpteFilm35mm fstUnnumberedSmpteFilm35mm
#define kVstSmpte239fps fstUnnumberedSmpte239fps
#define kVstSmpte249fps fstUnnumberedSmpte249fps
#define kVstSmpte599fps fstUnnumberedSmpte599fps
#define kVstSmpte60fps fstUnnumberedSmpte60fps

#define VstSpeakerArrangement FstFlexibleSpeakerArrangement

#define FST2VST 1
#include <pluginterfaces/fst/fst.h>

#undef effEditTop
#undef effConnectInput
#undef effConnectOutput
#undef effSetBypass
#undef effGetTailSize
#undef effIdle
#undef effKeysRequired
#undef effGetNumMidiInputChannels
#undef effGetNumMidiOutputChannels

#undef audioMasterIOChanged
#undef audioMasterUpdateDisplay
#undef audioMasterVendorSpecific

#undef kVstPinIsActive
#undef kVstPinIsStereo
#undef kVstPinUseSpeaker

#undef kVstSmpte24fps
#undef kVstSmpte25fps
#undef kVstSmpte2997fps
#undef kVstSmpte30fps
#undef kVstSmpte2997dfps
#undef kVstSmpte30dfps
#undef kVstSmpteFilm16mm
#undef kVstSmpteFilm35mm
#undef kVstSmpte239fps
#undef kVstSmpte249fps
#undef kVstSmpte599fps
#undef kVstSmpte60fps

#undef VstSpeakerArrangement

enum NumberedEffectOpcode
{
    effEditTop = 20,
    effConnectInput = 31,
    effConnectOutput = 32,
    effSetBypass = 44,
    effGetTailSize = 52,
    effIdle = 53,
    effKeysRequired = 57,
    effGetNumMidiInputChannels = 78,
    effGetNumMidiOutputChannels = 79
};

// Of the type of the other host opcodes, since the framework keeps them in variables of it.
constexpr auto audioMasterIOChanged = static_cast<t_fstHostOpcode> (13);
constexpr auto audioMasterVendorSpecific = static_cast<t_fstHostOpcode> (35);
constexpr auto audioMasterUpdateDisplay = static_cast<t_fstHostOpcode> (42);

enum NumberedPinFlag
{
    kVstPinIsActive = 1 << 0,
    kVstPinIsStereo = 1 << 1,
    kVstPinUseSpeaker = 1 << 2
};

enum NumberedSmpteFrameRate
{
    kVstSmpte24fps = 0,
    kVstSmpte25fps = 1,
    kVstSmpte2997fps = 2,
    kVstSmpte30fps = 3,
    kVstSmpte2997dfps = 4,
    kVstSmpte30dfps = 5,
    kVstSmpteFilm16mm = 6,
    kVstSmpteFilm35mm = 7,
    kVstSmpte239fps = 10,
    kVstSmpte249fps = 11,
    kVstSmpte599fps = 12,
    kVstSmpte60fps = 13
};

struct VstSpeakerArrangement
{
    int type;
    int numChannels;
    VstSpeakerProperties speakers[8];
};
