#pragma once

#include <juce_core/juce_core.h>

/** What the interface says about its controls when the pointer rests on them. A line of white space at the end of each
    is part of it. Some hold no-break spaces, written as escapes so that they can be seen. All are UTF-8. */
namespace Tips
{
inline constexpr auto burgerMenu = "Click to view frequency band options.\n ";

inline constexpr auto resetTargets = "Click to reset the target analysis.\n ";

inline constexpr auto addSmartBands =
    "Adding smart bands creates frequency bands based on the gain adjustment target. Any adjustment "
    "targets less than a 0.5dB change will not trigger the smart bands.\n ";

inline constexpr auto deleteAllBands = "Delete all EQ bands in SOLVANE.\n ";

inline constexpr auto addBands = "Click a number to quickly add that many bands in SOLVANE.\n ";

inline constexpr auto filterPhase =
    "Click LIN to use Linear Phase filters. These filters do not introduce any phase colouration but can "
    "affect transients, however SOLVANE uses carefully chosen filters to minimise this.\n\nClick MIN to "
    "use Minimum Phase filters. These filters introduce phase colouration but have less impact on "
    "transients.\n ";

inline constexpr auto filterMode =
    "Click MIX to set filters for use with steeper gain and Q settings more typical in a channel "
    "setting.\n\nClick MAST to set filters for use in a mastering environment with more subtle changes "
    "in gain and Q limited to +-4dB and Q 0-1.5.\n ";

inline constexpr auto compareSwitch =
    "Click to switch between 2 settings. When A is highlighted changes will be stored in A and vice "
    "versa.\n ";

inline constexpr auto compareCopy = "Click to set both A and B to the currently selected setting.\n ";

inline constexpr auto mainBypass =
    "Main Bypass: Click to bypass all settings. The output slider below has a level match pointer to "
    "help you adjust the output gain to match the original perceived\u00A0loudness of your audio before "
    "it passed through\u00A0SOLVANE.\n ";

inline constexpr auto gainScale = "Gain Scale: Scale the gain of all frequency bands together.\n ";

inline constexpr auto settings = "Adjust and save the default settings to suit your workflow preferences.\n ";

inline constexpr auto help = "Manual, updates, version number, support, and other useful links.\n ";

/** Instead of the former, once the maker's server has answered. */
inline constexpr auto helpUpToDate = "Manuals, version number and other useful links.\n ";
inline constexpr auto helpUpdate = "An update is available!\n ";

inline constexpr auto room =
    "Gain Adjustment Target\n\nWhen a preset is created or selected, you'll see a green EQ curve appear "
    "on the walls of SOLVANE. This is the gain adjustment target.\n\n Adjust the gain and Q bandwidth of "
    "the EQ band to line up with the gain adjustment target to match the tonal balance of your "
    "preset.\n\nThe target is based on the total accumulating audio of your track analyzed by "
    "SOLVANE.\n\nTo reset the audio analysis, click the burger menu in the top right corner and click "
    "'Reset Targets'.\n\nYou can set the target calculations to analyze your audio 'pre' or 'post' EQ "
    "changes in the settings. Selecting 'pre' will give you stable and easy-to-match targets, whilst "
    "'post' will include the EQ adjustments you've made with SOLVANE in the target calculation.\n\n Use "
    "the targets to get a great starting point, then adjust by ear to tweak to perfection.\n ";

inline constexpr auto heatMap =
    "Hz Scale: The audio input heat-map displays frequency specific peaks of the audio. The brighter the "
    "glow, the more energy\u00A0there is in that frequency range. Switch this On/Off in settings.\n ";

inline constexpr auto bandQ =
    "The Q Bandwidth control determines the range of frequencies affected. Click and drag the Q "
    "bandwidth handle to make the band smaller for a thinner Q affecting a narrower range of "
    "frequencies. Click and drag the Q bandwidth handle to make the band larger for a wider Q affecting "
    "a broader range of frequencies.\n\n Click 'ctrl' to access EQ bands that are placed behind other EQ "
    "bands.\n ";

inline constexpr auto bandControl =
    "Gain Control: Click and drag on the main body of the control to adjust the gain.\n\nQ Bandwidth "
    "Handles: Click and drag the top/bottom handles to adjust the Q bandwidth.\n\nHz Line: Click and "
    "drag the centre line to adjust the frequency.\n\nDouble click on the Q and frequency controls to "
    "enter an amount manually.\n ";

inline constexpr auto bandReadout =
    "The control panel readout displays the bands dB amount as default. Click to enter a dB amount "
    "manually.\n ";

inline constexpr auto bandFrequency =
    "Click and drag to adjust the frequency of the band. Roll your mouse from the Hz adjustment control "
    "into the control panel readout to enter the Hz manually.\n\nClick 'ctrl' to access EQ bands that "
    "are placed behind other EQ bands.\n ";

inline constexpr auto bandSolo = "Click the headphone icon to solo the EQ band.\n ";

inline constexpr auto bandBypass = "Click the power icon to bypass the EQ band.\n ";

inline constexpr auto bandDelete = "Click the X to delete the EQ band.\n ";

inline constexpr auto bandShelf =
    "The high-shelf/peak button allows you to switch between a high-shelf and peaking filter for that "
    "individual band. Bands created above 10kHz default to a high-shelf filter. The high-shelf icon "
    "appears on EQ bands above 1.6kHz.\n ";

inline constexpr auto mid = "Select to use this band to filter only the Mid signal.\n ";

inline constexpr auto side = "Select to use this band to filter only the Side signal.\n ";

inline constexpr auto stereo =
    "Stereo: Click and drag to adjust the mid side balance. Click once to return to stereo.\n ";

inline constexpr auto website = "Click to visit our website and see the latest products, blog posts, and tutorials.\n ";

/** Instead of the former, once there is one. */
inline constexpr auto newProduct = "A new product is available!\n ";

inline constexpr auto scale =
    "Scale:\u00A0Click and hold the display range\u00A0figure to change the range. (\u00B12dB / "
    "\u00B14dB / \u00B18dB / \u00B112dB).\n ";

inline constexpr auto presets =
    "These are the SOLVANE presets. Find the genre or style that best matches the track you're working "
    "on (i.e Pop - Electronic). Feel free to experiment with different presets to see which gives you "
    "the tonal balance targets best suited to your preference. Once you've selected a preset, you'll see "
    "a Gain Adjustment Target on the walls of SOLVANE.\n ";

inline constexpr auto targets =
    "You can create your own target values by clicking the target icon and importing reference tracks.\n ";

inline constexpr auto analysis =
    "If you're creating targets, we recommend clicking and dragging on the waveform to select the drop "
    "or chorus for the analysis, as this is usually the material with the best representation of the "
    "full frequency spectrum in the track.\u00A0SOLVANE\u00A0will create targets based on all the tracks "
    "loaded into the analysis window. You can analyse up to 20 tracks.\n\n The transport bar below the "
    "waveform allows you to preview the audio of your selected reference track. You'll need to enable "
    "input monitoring to audition tracks. Click + Drag to create and adjust loops. Alt + Click on a loop "
    "to delete it, Alt + Click outside a loop to delete all loops on that track.\n ";

inline constexpr auto analyse = "Click to analyse currently loaded tracks.\n ";

inline constexpr auto addTrack =
    "Add your reference tracks. You can also drag and drop your \nreferences onto the waveform to add a track.\n ";

inline constexpr auto deleteTrack = "Delete the selected reference track.\n ";

inline constexpr auto closeAnalysis = "Close the analysis window.\n ";

inline constexpr auto saveTarget = "Save your target to a file, for other sessions and for the command line.\n ";

inline constexpr auto loadTarget = "Load a target from a file. It takes the place of the USER SETTING preset.\n ";

inline constexpr auto transport =
    "Click to listen to the selected track from here, in place of your audio. Click again beside the line to pause.\n ";

/** A tip as a text of the framework's. */
[[nodiscard]] inline juce::String text (const char* tip)
{
    return juce::String::fromUTF8 (tip);
}
} // namespace Tips
