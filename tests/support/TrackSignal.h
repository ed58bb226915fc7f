#pragma once

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstdint>
#include <numbers>
#include <vector>

/** A signal that a fixture of tracks describes: a sum of terms in double precision, rounded once. */
struct TrackSignal
{
    std::vector<float> left;

    /** Empty for mono. */
    std::vector<float> right;

    TrackSignal (const nlohmann::json& signal, double sampleRate)
        : left (channelOf (signal["left"], signal["samples"], sampleRate)),
          right (channelOf (signal["right"], signal["samples"], sampleRate))
    {
    }

private:
    static std::vector<float> channelOf (const nlohmann::json& terms, std::size_t count, double sampleRate)
    {
        if (terms.is_null())
            return {};

        std::vector<double> sum (count, 0.0);

        for (const auto& term : terms)
            addTerm (term, sampleRate, sum);

        return { sum.begin(), sum.end() };
    }

    static void addTerm (const nlohmann::json& term, double sampleRate, std::vector<double>& sum)
    {
        constexpr auto twoPi = 2.0 * std::numbers::pi;
        const std::string kind = term["kind"];
        const auto from = term.value ("from", std::size_t { 0 });
        const auto to = term.value ("to", sum.size());
        const auto amplitude = term["amplitude"].get<double>();
        const auto radians = twoPi * term.value ("hz", 0.0) / sampleRate;
        auto random = term.value ("seed", std::uint32_t { 0 });

        for (std::size_t n = 0; n < sum.size(); ++n)
        {
            const auto time = static_cast<double> (n);
            auto value = amplitude * std::sin (radians * time);

            if (kind == "decay")
                value *= std::exp (-time / (term["tau"].get<double>() * sampleRate));
            else if (kind == "pulse")
                value *= 0.5 + 0.5 * std::sin (twoPi * term["every"].get<double>() * time / sampleRate);
            else if (kind == "noise")
            {
                random = 1664525u * random + 1013904223u;
                value = amplitude * (static_cast<double> (random) / 2147483648.0 - 1.0);
            }

            if (n >= from && n < to)
                sum[n] += value;
        }
    }
};
