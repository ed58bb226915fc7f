#include "app/CommandDescription.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace
{
CommandDescription::Option describe (const CLI::Option& option)
{
    CommandDescription::Option result;

    for (const auto& name : option.get_snames())
        result.names.push_back ("-" + name);

    for (const auto& name : option.get_lnames())
        result.names.push_back ("--" + name);

    if (option.get_positional())
        result.value = option.get_name (true);
    else if (option.get_items_expected_max() > 0)
        result.value = option.get_type_name();

    result.text = option.get_description();
    result.defaultValue = option.get_default_str();
    result.required = option.get_required();
    result.repeated =
        option.get_expected_max() > 1 || option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
    return result;
}
} // namespace

std::vector<std::string> CommandDescription::Option::words() const
{
    std::vector<std::string> found;

    if (value.find ('|') == std::string::npos)
        return found;

    std::istringstream stream (value);

    for (std::string word; std::getline (stream, word, '|');)
        found.push_back (word);

    return found;
}

std::string CommandDescription::Option::firstSentence() const
{
    const auto line = text.substr (0, text.find ('\n'));
    const auto stop = line.find (". ");
    auto sentence = line.substr (0, stop);

    if (! sentence.empty() && sentence.back() == '.')
        sentence.pop_back();

    return sentence;
}

CommandDescription CommandDescription::of (const CLI::App& app)
{
    CommandDescription result;
    result.name = app.get_name();
    result.text = app.get_description();
    result.footer = app.get_footer();

    for (const auto* option : app.get_options ({}))
        if (! option->get_group().empty())
            result.options.push_back (describe (*option));

    for (const auto* command : app.get_subcommands ([] (const CLI::App* each) { return ! each->get_group().empty(); }))
    {
        auto description = of (*command);

        // A command without a footer of its own has the program's, which is told once.
        if (description.footer == result.footer)
            description.footer.clear();

        result.commands.push_back (std::move (description));
    }

    return result;
}
