#include "gui/look/Icons.h"

#include <SolvaneResources.h>

juce::String Icons::svg (Role role)
{
    using namespace SolvaneResources;
    const auto text = [] (const char* data, int size) { return juce::String::fromUTF8 (data, size); };

    switch (role)
    {
        case Role::logo:
            return text (logo_svg, logo_svgSize);
        case Role::settings:
            return text (settings_svg, settings_svgSize);
        case Role::help:
            return text (help_svg, help_svgSize);
        case Role::helpUpdate:
            return text (helpupdate_svg, helpupdate_svgSize);
        case Role::copyToA:
            return text (copytoa_svg, copytoa_svgSize);
        case Role::copyToB:
            return text (copytob_svg, copytob_svgSize);
        case Role::compareA:
            return text (comparea_svg, comparea_svgSize);
        case Role::compareADown:
            return text (compareadown_svg, compareadown_svgSize);
        case Role::compareB:
            return text (compareb_svg, compareb_svgSize);
        case Role::compareBDown:
            return text (comparebdown_svg, comparebdown_svgSize);
        case Role::burger:
            return text (burger_svg, burger_svgSize);
        case Role::analyse:
            return text (analyse_svg, analyse_svgSize);
        case Role::analyseUser:
            return text (analyseuser_svg, analyseuser_svgSize);
        case Role::output:
            return text (output_svg, output_svgSize);
        case Role::outputWarning:
            return text (outputwarning_svg, outputwarning_svgSize);
        case Role::outputBypassed:
            return text (outputbypassed_svg, outputbypassed_svgSize);
        case Role::gainScale:
            return text (gainscale_svg, gainscale_svgSize);
        case Role::bandActive:
            return text (bandactive_svg, bandactive_svgSize);
        case Role::bandBypassed:
            return text (bandbypassed_svg, bandbypassed_svgSize);
        case Role::soloOff:
            return text (solooff_svg, solooff_svgSize);
        case Role::soloOn:
            return text (soloon_svg, soloon_svgSize);
        case Role::bell:
            return text (bell_svg, bell_svgSize);
        case Role::shelf:
            return text (shelf_svg, shelf_svgSize);
        case Role::mid:
            return text (mid_svg, mid_svgSize);
        case Role::side:
            return text (side_svg, side_svgSize);
        case Role::phaseLinear:
            return text (phaselinear_svg, phaselinear_svgSize);
        case Role::phaseLinearDown:
            return text (phaselineardown_svg, phaselineardown_svgSize);
        case Role::phaseMinimum:
            return text (phaseminimum_svg, phaseminimum_svgSize);
        case Role::phaseMinimumDown:
            return text (phaseminimumdown_svg, phaseminimumdown_svgSize);
        case Role::modeMix:
            return text (modemix_svg, modemix_svgSize);
        case Role::modeMixDown:
            return text (modemixdown_svg, modemixdown_svgSize);
        case Role::modeMaster:
            return text (modemaster_svg, modemaster_svgSize);
        case Role::modeMasterDown:
            return text (modemasterdown_svg, modemasterdown_svgSize);
        case Role::switchOff:
            return text (switchoff_svg, switchoff_svgSize);
        case Role::switchOffDown:
            return text (switchoffdown_svg, switchoffdown_svgSize);
        case Role::switchOn:
            return text (switchon_svg, switchon_svgSize);
        case Role::switchOnDown:
            return text (switchondown_svg, switchondown_svgSize);
        case Role::close:
            return text (close_svg, close_svgSize);
        case Role::closeOver:
            return text (closeover_svg, closeover_svgSize);
        case Role::closeDown:
            return text (closedown_svg, closedown_svgSize);
        case Role::closeAnalysis:
            return text (closeanalysis_svg, closeanalysis_svgSize);
        case Role::trackAdd:
            return text (trackadd_svg, trackadd_svgSize);
        case Role::trackDelete:
            return text (trackdelete_svg, trackdelete_svgSize);
        case Role::dropFiles:
            return text (dropfiles_svg, dropfiles_svgSize);
        case Role::cursorAdd:
            return text (cursoradd_svg, cursoradd_svgSize);
        case Role::cursorRemove:
            return text (cursorremove_svg, cursorremove_svgSize);
        case Role::cursorMove:
            return text (cursormove_svg, cursormove_svgSize);
        case Role::website:
            return text (website_svg, website_svgSize);
        case Role::websiteNews:
            return text (websitenews_svg, websitenews_svgSize);
    }

    return {};
}
