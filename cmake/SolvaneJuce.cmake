# solvane_juce: the framework's modules, compiled once and linked by the plug-ins, the command-line program and the
# tests alike, so that all of them run the same object code.

find_package (JUCE CONFIG REQUIRED) # its version file refuses a bare 7, so the version is checked here

if (JUCE_VERSION VERSION_LESS 7.0.5 OR JUCE_VERSION VERSION_GREATER_EQUAL 8)
    message (FATAL_ERROR "JUCE ${JUCE_VERSION} was found; SOLVANE is built and tested with 7.0.5 or a later 7")
endif()

find_package (PkgConfig REQUIRED)
# Debian's framework comes without its bundled codecs.
pkg_check_modules (SolvaneCodecs REQUIRED IMPORTED_TARGET flac libpng libjpeg zlib)
pkg_check_modules (SolvaneCurl REQUIRED IMPORTED_TARGET libcurl)

add_library (solvane_juce STATIC)

target_compile_definitions (solvane_juce
    PUBLIC
        JUCE_GLOBAL_MODULE_SETTINGS_INCLUDED=1
        JUCE_WEB_BROWSER=0
        JUCE_USE_CURL=1
        JUCE_USE_MP3AUDIOFORMAT=1
        JUCE_USE_OGGVORBIS=0
        JUCE_DISPLAY_SPLASH_SCREEN=0
        JUCE_REPORT_APP_USAGE=0
        JUCE_VST3_CAN_REPLACE_VST2=0
        JUCE_PLUGINHOST_VST3=1
        JUCE_PLUGINHOST_LV2=1
        JUCE_STRICT_REFCOUNTEDPOINTER=1
        $<$<CONFIG:Debug>:DEBUG=1 _DEBUG=1>
        $<$<NOT:$<CONFIG:Debug>>:NDEBUG=1 _NDEBUG=1>
    INTERFACE
        $<TARGET_PROPERTY:solvane_juce,COMPILE_DEFINITIONS>)

target_include_directories (solvane_juce SYSTEM
    INTERFACE $<TARGET_PROPERTY:solvane_juce,INCLUDE_DIRECTORIES>)

target_link_libraries (solvane_juce
    PRIVATE
        juce::juce_audio_basics
        juce::juce_audio_devices
        juce::juce_audio_formats
        juce::juce_audio_processors
        juce::juce_audio_utils
        juce::juce_core
        juce::juce_data_structures
        juce::juce_events
        juce::juce_graphics
        juce::juce_gui_basics
        juce::juce_gui_extra
    PUBLIC
        solvane_flags
        PkgConfig::SolvaneCodecs
        PkgConfig::SolvaneCurl)

set_target_properties (solvane_juce PROPERTIES
    POSITION_INDEPENDENT_CODE TRUE
    VISIBILITY_INLINES_HIDDEN TRUE
    C_VISIBILITY_PRESET hidden
    CXX_VISIBILITY_PRESET hidden)

if (NOT MSVC)
    # What a plug-in does not use, such as the hosting classes of the tests, is dropped when it is linked.
    target_compile_options (solvane_juce PRIVATE -ffunction-sections -fdata-sections -w)
    target_link_options (solvane_juce INTERFACE $<$<PLATFORM_ID:Linux>:-Wl,--gc-sections>)
endif()
