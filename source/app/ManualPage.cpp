#include "app/ManualPage.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace
{
/** Text as it is: no letter of it is a command to the formatter. */
std::string plain (const std::string& text)
{
    std::string result;

    for (const auto letter : text)
    {
        if ((letter == '.' || letter == '\'') && (result.empty() || result.back() == '\n'))
            result += "\\&";

        if (letter == '\\')
            result += "\\e";
        else if (letter == '-')
            result += "\\-";
        else
            result += letter;
    }

    return result;
}

std::string upper (std::string text)
{
    std::transform (text.begin(), text.end(), text.begin(), [] (unsigned char c) { return std::toupper (c); });
    return text;
}

std::string bold (const std::string& text)
{
    return "\\fB" + plain (text) + "\\fR";
}

std::string italic (const std::string& text)
{
    return "\\fI" + plain (text) + "\\fR";
}

/** Words are typed as they are, names are replaced. */
std::string valueText (const CommandDescription::Option& option)
{
    return option.words().empty() ? italic (option.value) : plain (option.value);
}

void writeSynopsis (std::ostream& page, const std::string& program, const CommandDescription& command)
{
    page << ".B " << plain (program + " " + command.name) << '\n';

    for (const auto& option : command.options)
        if (option.isPositional())
            page << (option.required ? "" : "[") << italic (option.value) << (option.required ? "" : "]")
                 << (option.repeated ? " ..." : "") << '\n';

    page << "[\\fIoptions\\fR]\n";
}

void writeOptions (std::ostream& page, const CommandDescription& command)
{
    for (const auto& option : command.options)
    {
        page << ".TP\n";

        if (option.isPositional())
            page << valueText (option);

        for (std::size_t index = 0; index < option.names.size(); ++index)
            page << (index > 0 ? ", " : "") << bold (option.names[index]);

        if (! option.isPositional() && ! option.isFlag())
            page << ' ' << valueText (option);

        page << '\n' << plain (option.text) << (option.text.ends_with ('.') ? "" : ".") << '\n';

        if (! option.defaultValue.empty())
            page << "Unless given: " << plain (option.defaultValue) << ".\n";
    }
}

/** A heading, if the first line is one, and the indented lines below it as they are. */
void writeFooter (std::ostream& page, const std::string& footer)
{
    std::istringstream lines (footer);
    auto inExample = false;

    for (std::string line; std::getline (lines, line);)
    {
        if (line.empty())
            continue;

        const auto isExample = line.starts_with ("  ");

        if (isExample != inExample)
            page << (isExample ? ".PP\n.nf\n" : ".fi\n");

        if (! isExample && ! inExample)
            page << ".PP\n";

        page << plain (isExample ? line.substr (2) : line) << '\n';
        inExample = isExample;
    }

    if (inExample)
        page << ".fi\n";
}
} // namespace

std::string manualPage (const CommandDescription& program, const std::string& version)
{
    std::ostringstream page;
    const auto comma = program.text.find (", ");

    page << ".TH " << upper (program.name) << " 1 \"\" \"" << plain (version) << "\" \"User Commands\"\n"
         << ".SH NAME\n"
         << plain (program.name) << " \\- "
         << plain (comma == std::string::npos ? program.text : program.text.substr (comma + 2)) << '\n'
         << ".SH SYNOPSIS\n";

    for (std::size_t index = 0; index < program.commands.size(); ++index)
    {
        page << (index > 0 ? ".br\n" : "");
        writeSynopsis (page, program.name, program.commands[index]);
    }

    page << ".SH DESCRIPTION\n" << plain (program.text) << "\n.SH OPTIONS\n";
    writeOptions (page, program);
    page << ".SH COMMANDS\n";

    for (const auto& command : program.commands)
    {
        page << ".SS " << plain (program.name + " " + command.name) << '\n' << plain (command.text) << '\n';
        writeOptions (page, command);
        writeFooter (page, command.footer);
    }

    page << ".SH NOTES\n";
    writeFooter (page, program.footer);
    return page.str();
}
