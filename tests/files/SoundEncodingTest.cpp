#include "files/SoundEncoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{
using testing::AllOf;
using testing::Contains;
using testing::Not;
using Container = SoundEncoding::Container;
using Width = SoundEncoding::Width;

std::vector<std::string> names()
{
    std::vector<std::string> list;

    for (const auto& encoding : SoundEncoding::all())
        list.push_back (encoding.name());

    return list;
}

TEST (SoundEncodingTest, offersWhatTheContainersHold)
{
    EXPECT_THAT (names(),
                 AllOf (Contains ("wav-8"),
                        Contains ("wav-16"),
                        Contains ("wav-float"),
                        Contains ("rf64-24"),
                        Contains ("w64-32"),
                        Contains ("aiff-24"),
                        Contains ("caf-double"),
                        Contains ("flac-16")));
    EXPECT_THAT (names(), AllOf (Contains ("ogg"), Contains ("opus"), Contains ("mp3")));
    EXPECT_THAT (names(), AllOf (Not (Contains ("flac-float")), Not (Contains ("flac-32")), Not (Contains ("mp3-16"))));
}

TEST (SoundEncodingTest, comesBackFromItsNameAndFromTheLibrarysNumber)
{
    for (const auto& encoding : SoundEncoding::all())
    {
        EXPECT_EQ (SoundEncoding::fromName (encoding.name()), encoding) << encoding.name();
        EXPECT_EQ (SoundEncoding::fromLibraryFormat (encoding.libraryFormat()), encoding) << encoding.name();
    }

    EXPECT_EQ (SoundEncoding::fromName ("WAV-16"), (SoundEncoding { Container::wav, Width::bits16 }));
    EXPECT_FALSE (SoundEncoding::fromName ("wav-12").has_value());
}

TEST (SoundEncodingTest, takesTheNextWidthThatAContainerHolds)
{
    const auto nearest = [] (Container container, Width width)
    { return SoundEncoding::nearest (container, width).name(); };
    EXPECT_EQ (nearest (Container::wav, Width::bits8), "wav-8");
    EXPECT_EQ (nearest (Container::w64, Width::doubles), "w64-double");
    EXPECT_EQ (nearest (Container::flac, Width::bits16), "flac-16");
    EXPECT_EQ (nearest (Container::flac, Width::bits32), "flac-24");
    EXPECT_EQ (nearest (Container::flac, Width::floats), "flac-24");
    EXPECT_EQ (nearest (Container::mp3, Width::bits16), "mp3");
    EXPECT_EQ (nearest (Container::wav, Width::lossy), "wav-float");
    EXPECT_EQ (nearest (Container::aiff, Width::lossy), "aiff-24");
    EXPECT_EQ (nearest (Container::flac, Width::lossy), "flac-24");
    EXPECT_EQ (nearest (Container::vorbis, Width::lossy), "ogg");
}

TEST (SoundEncodingTest, knowsContainersByEndingsInAnyCase)
{
    EXPECT_EQ (SoundEncoding::containerByEnding ("WAV"), Container::wav);
    EXPECT_EQ (SoundEncoding::containerByEnding ("aif"), Container::aiff);
    EXPECT_EQ (SoundEncoding::containerByEnding ("oga"), Container::vorbis);
    EXPECT_FALSE (SoundEncoding::containerByEnding ("fla").has_value());
    EXPECT_FALSE (SoundEncoding::containerByEnding ("").has_value());
}

TEST (SoundEncodingTest, describesItselfToPeople)
{
    EXPECT_EQ ((SoundEncoding { Container::wav, Width::floats }).description(), "WAV, 32 bits floating point");
    EXPECT_EQ ((SoundEncoding { Container::flac, Width::bits16 }).description(), "FLAC, 16 bits");
    EXPECT_EQ ((SoundEncoding { Container::opus, Width::lossy }).description(), "Opus");
}
} // namespace
