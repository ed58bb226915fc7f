#include "app/SmartBandsTarget.h"

#include "app/CommandError.h"
#include "app/PresetChoice.h"
#include "app/TargetCommand.h"
#include "app/TargetFile.h"
#include "targets/TopBand.h"

#include <map>
#include <memory>

namespace
{
/** A target as it is used: with the value at 18 kHz that follows from those below. */
MeasurementTarget inUse (const MeanTarget& mean, const std::string& name)
{
    MeasurementTarget target;
    target.name = name;
    target.title = name;
    target.lufs = mean.lufs;
    target.values = mean.values;
    makeTopBandValue ({ static_cast<double> (mean.values[6]),
                        static_cast<double> (mean.values[7]),
                        static_cast<double> (mean.values[8]) },
                      &target.values.back());
    return target;
}

std::string namesOf (const std::vector<ReferenceFile>& references)
{
    std::string text;

    for (const auto& reference : references)
        text += (text.empty() ? "" : ", ") + reference.path;

    return text;
}

MeasurementTarget measured (const std::vector<ReferenceFile>& references, double sampleRate, bool quiet)
{
    std::vector<ReferenceReading> readings;

    for (const auto& reference : references)
        readings.push_back (measureReference (reference, sampleRate, quiet));

    auto target = inUse (meanOf (readings), namesOf (references));

    for (const auto& reading : readings)
        target.notes.insert (target.notes.end(), reading.notes.begin(), reading.notes.end());

    return target;
}
} // namespace

SmartBandsTarget SmartBandsTargets::ofPreset (const std::string& preset)
{
    const Presets::Library library;
    const auto target = MeasurementTarget::of (library, PresetChoice::find (library, preset));

    if (! target.exists)
        throw CommandError (ExitCode::badArguments,
                            "--preset " + preset + ": " + target.name
                                + " is no target. --smart-bands needs one to go by.");

    return [target] (double) { return target; };
}

SmartBandsTarget SmartBandsTargets::ofFile (const std::string& path)
{
    const auto file = TargetFile::read (path);
    const auto target = inUse (file.target, file.name);
    return [target] (double) { return target; };
}

SmartBandsTarget SmartBandsTargets::ofReferences (const std::vector<ReferenceFile>& references, bool quiet)
{
    const auto known = std::make_shared<std::map<double, MeasurementTarget>>();

    return [references, quiet, known] (double sampleRate)
    {
        if (const auto found = known->find (sampleRate); found != known->end())
            return found->second;

        return known->emplace (sampleRate, measured (references, sampleRate, quiet)).first->second;
    };
}
