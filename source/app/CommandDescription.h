#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

/** What the parser knows of a program: read from the parser itself, so that the manual page and the completions never
    say anything else than the help texts. */
struct CommandDescription
{
    struct Option
    {
        /** With their dashes; empty for what is given by its place. */
        std::vector<std::string> names;

        /** What help calls the value; of a positional its name, and empty for a flag. */
        std::string value;
        std::string text;
        std::string defaultValue;
        bool required = false;
        bool repeated = false;

        [[nodiscard]] bool isFlag() const noexcept { return value.empty(); }
        [[nodiscard]] bool isPositional() const noexcept { return names.empty(); }

        /** The words that the value may be, where help lists them with bars between. */
        [[nodiscard]] std::vector<std::string> words() const;

        /** The text up to its first full stop or line end. */
        [[nodiscard]] std::string firstSentence() const;
    };

    std::string name;
    std::string text;
    std::string footer;
    std::vector<Option> options;
    std::vector<CommandDescription> commands;

    /** Reads a program and its commands; what help hides stays hidden. */
    [[nodiscard]] static CommandDescription of (const CLI::App& app);
};
