#include "gui/help/HelpWindow.h"

#include "services/Product.h"
#include "support/Messages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
const WebHosts ours { "https://www.maker.test", "https://help.maker.test", "https://files.maker.test" };

class HelpWindowTest : public testing::Test, public juce::ActionListener
{
protected:
    InterfaceState state;
    HelpWindow window { state, ours };
    juce::StringArray words;
    juce::StringArray opened;

    HelpWindowTest()
    {
        window.addActionListener (this);
        window.openAddressesWith ([this] (const juce::URL& address) { opened.add (address.toString (true)); });
    }

    void actionListenerCallback (const juce::String& word) override { words.add (word); }

    /** The part of the page that shows a text, or null. */
    [[nodiscard]] juce::Component* partWith (const juce::String& text) const
    {
        for (auto* child : window.getChildren())
        {
            const auto* label = dynamic_cast<juce::Label*> (child);
            const auto* button = dynamic_cast<juce::Button*> (child);

            if ((label != nullptr && label->getText() == text)
                || (button != nullptr && (button->getButtonText() == text || button->getName() == text)))
                return child;
        }

        return nullptr;
    }

    [[nodiscard]] juce::Rectangle<int> placeOf (const juce::String& text) const
    {
        const auto* part = partWith (text);
        return part != nullptr ? part->getBounds() : juce::Rectangle<int> { -1, -1, 0, 0 };
    }

    void click (const juce::String& text)
    {
        auto* button = dynamic_cast<juce::Button*> (partWith (text));
        ASSERT_NE (button, nullptr) << text;
        button->triggerClick();
        Messages::deliver();
    }
};

using Place = juce::Rectangle<int>;
} // namespace

TEST_F (HelpWindowTest, everyTextStandsInItsPlace)
{
    EXPECT_EQ (placeOf ("HELP"), Place (30, 40, 150, 20));
    EXPECT_EQ (placeOf ("This is SOLVANE version 1.0.8 : build " + Product::buildDate()), Place (30, 75, 300, 20));
    EXPECT_EQ (placeOf ("An update is available, click to download."), Place (34, 105, 280, 20));
    EXPECT_EQ (placeOf ("This version is up to date."), Place (30, 109, 200, 20));
    EXPECT_EQ (placeOf ("Links to Online Help"), Place (30, 135, 200, 40));
    EXPECT_EQ (placeOf ("Online Guide"), Place (34, 170, 100, 20));
    EXPECT_EQ (placeOf ("Help Centre"), Place (34, 200, 150, 20));
    EXPECT_EQ (placeOf ("User Manual"), Place (34, 230, 200, 20));
    EXPECT_EQ (placeOf ("Support"), Place (34, 260, 50, 20));
    EXPECT_EQ (placeOf (Product::rights (Product::buildDate())), Place (30, 440, 450, 10));
    EXPECT_EQ (placeOf ("Close"), Place (495, 420, 77, 34));
}

TEST_F (HelpWindowTest, theRightsNameTheMakerAndTheYearOfTheBuild)
{
    EXPECT_THAT (Product::buildDate().toStdString(),
                 testing::MatchesRegex ("[A-Z][a-z][a-z] [ 0-9][0-9] 20[0-9][0-9]"));
    const auto year = Product::buildDate().getLastCharacters (4);
    EXPECT_EQ (Product::rights (Product::buildDate()),
               juce::String::fromUTF8 ("\u00A9 ") + year
                   + " Brevlen. Free software under the GNU GPL, version 3 or later.");
}

TEST_F (HelpWindowTest, saysThatTheVersionIsUpToDateWhileNothingNewerIsKnown)
{
    window.setVisible (true);
    EXPECT_TRUE (partWith ("This version is up to date.")->isVisible());
    EXPECT_FALSE (partWith ("An update is available, click to download.")->isVisible());
}

TEST_F (HelpWindowTest, showsTheLinkToAnUpdateWhenItOpensWithOne)
{
    state.updateAvailable = true;
    window.setVisible (true);
    EXPECT_FALSE (partWith ("This version is up to date.")->isVisible());
    EXPECT_TRUE (partWith ("An update is available, click to download.")->isVisible());
}

TEST_F (HelpWindowTest, looksAgainEachTimeItOpens)
{
    state.updateAvailable = true;
    window.setVisible (true);
    window.setVisible (false);
    state.updateAvailable = false;
    window.setVisible (true);
    EXPECT_FALSE (partWith ("An update is available, click to download.")->isVisible());
}

TEST_F (HelpWindowTest, everyLinkOpensItsAddress)
{
    state.updateAvailable = true;
    window.refresh();

    for (const auto* text :
         { "Online Guide", "Help Centre", "User Manual", "Support", "An update is available, click to download." })
        click (text);

    EXPECT_EQ (opened,
               juce::StringArray ("https://www.maker.test/products/SOLVANE#howitworks",
                                  "https://help.maker.test/hc/en-gb",
                                  "https://www.maker.test/pages/solvane-manual",
                                  "https://help.maker.test/hc/en-gb/requests/new",
                                  "https://files.maker.test/zvq-installers/Brevlen_INSTALLER_WIN_ZVQ.zip"));
    EXPECT_TRUE (words.isEmpty());
}

TEST_F (HelpWindowTest, closeSendsItsWord)
{
    click ("Close");
    EXPECT_EQ (words, juce::StringArray ("CLOSE"));
}
