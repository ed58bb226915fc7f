#include <gtest/gtest.h>

#include <juce_events/juce_events.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace
{
/** A home of this process's own, so that no test sees or touches the preferences of whoever runs it. Empty at the start
    of each test. */
class TemporaryHome final : public testing::EmptyTestEventListener
{
public:
    TemporaryHome()
    {
        auto name = (std::filesystem::temp_directory_path() / "solvane-home-XXXXXX").string();

        if (::mkdtemp (name.data()) == nullptr)
            throw std::runtime_error ("no folder for the tests' home: " + name);

        folder = name;
        ::setenv ("HOME", folder.c_str(), 1);
    }

    ~TemporaryHome() override
    {
        std::error_code ignored;
        std::filesystem::remove_all (folder, ignored);
    }

    void OnTestStart (const testing::TestInfo&) override
    {
        for (const auto& entry : std::filesystem::directory_iterator (folder))
            std::filesystem::remove_all (entry);
    }

    TemporaryHome (const TemporaryHome&) = delete;
    TemporaryHome& operator= (const TemporaryHome&) = delete;

private:
    std::filesystem::path folder;
};
} // namespace

int main (int argumentCount, char** arguments)
{
    testing::InitGoogleTest (&argumentCount, arguments);
    TemporaryHome home;
    auto& listeners = testing::UnitTest::GetInstance()->listeners();
    listeners.Append (&home);

    // One for the whole process: the framework's message manager does not come back once it has gone.
    const juce::ScopedJuceInitialiser_GUI framework;
    const auto result = RUN_ALL_TESTS();
    listeners.Release (&home);
    return result;
}
