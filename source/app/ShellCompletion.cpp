#include "app/ShellCompletion.h"

#include <sstream>
#include <utility>

namespace
{
using Option = CommandDescription::Option;

std::string joined (const std::vector<std::string>& words, const char* between)
{
    std::string text;

    for (const auto& word : words)
        text += (text.empty() ? "" : between) + word;

    return text;
}

std::vector<std::string> commandNames (const CommandDescription& program)
{
    std::vector<std::string> names;

    for (const auto& command : program.commands)
        names.push_back (command.name);

    return names;
}

std::vector<std::string> optionNames (const CommandDescription& command)
{
    std::vector<std::string> names;

    for (const auto& option : command.options)
        names.insert (names.end(), option.names.begin(), option.names.end());

    return names;
}

/** What bash offers for an option's value. */
std::string bashOffer (const Option& option)
{
    if (const auto words = option.words(); ! words.empty())
        return "COMPREPLY=($(compgen -W '" + joined (words, " ") + "' -- \"$current\"))";

    if (option.value == "FILE")
        return "_solvane_paths -f";

    return option.value == "FOLDER" ? "_solvane_paths -d" : ":";
}

/** A text within single quotes and within the brackets and colons of zsh's _arguments. */
std::string zshText (const std::string& text)
{
    std::string result;

    for (const auto letter : text)
    {
        if (letter == '\'')
            result += "'\\'";

        if (letter == '[' || letter == ']' || letter == ':' || letter == '\\')
            result += '\\';

        result += letter;
    }

    return result;
}

/** The part of a specification that says what a value may be. */
std::string zshValue (const Option& option)
{
    auto action = std::string();

    if (const auto words = option.words(); ! words.empty())
        action = "(" + joined (words, " ") + ")";
    else if (option.isPositional() || option.value == "FILE")
        action = "_files";
    else if (option.value == "FOLDER")
        action = "_files -/";

    return ":" + zshText (option.words().empty() ? option.value : "value") + ":" + action;
}

void writeZshOptions (std::ostream& file, const CommandDescription& command, const char* indent)
{
    auto filesTaken = false;

    for (const auto& option : command.options)
    {
        if (option.isPositional())
        {
            // One specification serves all files: which of them may still come is the program's to say.
            if (! std::exchange (filesTaken, true))
                file << indent << "'*" << zshValue (option) << "' \\\n";

            continue;
        }

        // The equals sign allows the value both behind one and as a word of its own.
        for (const auto& name : option.names)
            file << indent << "'" << (option.repeated ? "*" : "") << name
                 << (! option.isFlag() && name.starts_with ("--") ? "=" : "") << "[" << zshText (option.firstSentence())
                 << "]" << (option.isFlag() ? "" : zshValue (option)) << "' \\\n";
    }
}
} // namespace

std::string ShellCompletion::bash (const CommandDescription& program)
{
    const auto commands = commandNames (program);
    std::ostringstream file;

    file << R"(# Completion of solvane for bash. Made from the program's own description of its commands.

# Offers paths that begin with the current word, one to a line, so that blanks in names do no harm.
_solvane_paths() {
    local path
    compopt -o filenames 2>/dev/null
    while IFS= read -r path; do
        COMPREPLY+=("$path")
    done < <(compgen "$1" -- "$current")
}

_solvane() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command= word
    COMPREPLY=()

    # An equals sign between an option and its value is a word of its own.
    if [[ $current == = ]]; then
        current=
    elif [[ $previous == = ]]; then
        previous=${COMP_WORDS[COMP_CWORD-2]}
    fi

    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
            )"
         << joined (commands, " | ") << R"() command=$word; break ;;
        esac
    done

    case $command:$previous in
)";

    for (const auto& command : program.commands)
        for (const auto& option : command.options)
            if (! option.isPositional() && ! option.isFlag())
            {
                std::vector<std::string> patterns;

                for (const auto& name : option.names)
                    patterns.push_back (command.name + ":" + name);

                file << "        " << joined (patterns, " | ") << ") " << bashOffer (option) << "; return ;;\n";
            }

    file << "    esac\n\n    case $command:$current in\n        :-*) COMPREPLY=($(compgen -W '"
         << joined (optionNames (program), " ") << "' -- \"$current\")) ;;\n        :*) COMPREPLY=($(compgen -W '"
         << joined (commands, " ") << "' -- \"$current\")) ;;\n";

    for (const auto& command : program.commands)
        file << "        " << command.name << ":-*) COMPREPLY=($(compgen -W '" << joined (optionNames (command), " ")
             << "' -- \"$current\")) ;;\n";

    file << "        *) _solvane_paths -f ;;\n    esac\n}\n\ncomplete -F _solvane " << program.name << '\n';
    return file.str();
}

std::string ShellCompletion::zsh (const CommandDescription& program)
{
    std::ostringstream file;

    file << "#compdef " << program.name << R"(
# Completion of solvane for zsh. Made from the program's own description of its commands.

_solvane() {
    local context state state_descr line
    typeset -A opt_args

    _arguments -C \
)";
    writeZshOptions (file, program, "        ");
    file << R"(        '1:command:->command' \
        '*::argument:->argument' && return

    case $state in
        command)
            local -a commands
            commands=(
)";

    for (const auto& command : program.commands)
        file << "                '" << command.name << ':' << zshText (command.text) << "'\n";

    file << R"(            )
            _describe command commands
            ;;
        argument)
            case $words[1] in
)";

    for (const auto& command : program.commands)
    {
        file << "                " << command.name << ")\n                    _arguments \\\n";
        writeZshOptions (file, command, "                        ");
        file << "                        && return\n                    ;;\n";
    }

    file << R"(            esac
            ;;
    esac
}

_solvane "$@"
)";
    return file.str();
}
