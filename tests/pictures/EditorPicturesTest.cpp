#include "pictures/EditorStates.h"
#include "pictures/GoldenPicture.h"

#include <tuple>

namespace
{
const std::vector<EditorStage::Size> sizes {
    { 570, 606 },
    { 680, 712 },
    { 1400, 1200 },
    { 680, 712, 2 },
};

juce::String nameOf (EditorStage::Size size)
{
    const auto pixels = juce::String (size.width) + "x" + juce::String (size.height);
    return size.displayScale == 1 ? pixels : pixels + "-x" + juce::String (size.displayScale);
}

using Case = std::tuple<EditorState, EditorStage::Size>;

juce::String pictureName (const Case& tested)
{
    return juce::String (std::get<EditorState> (tested).name) + "-" + nameOf (std::get<EditorStage::Size> (tested));
}

class EditorPicturesTest : public testing::TestWithParam<Case>
{
};
} // namespace

TEST_P (EditorPicturesTest, theWindowLooksAsItDid)
{
    const auto& [state, size] = GetParam();
    EditorStage stage (size);
    state.reach (stage);
    stage.settle();
    EXPECT_TRUE (GoldenPicture::matches (stage.picture(), pictureName (GetParam())));
}

INSTANTIATE_TEST_SUITE_P (StatesAndSizes,
                          EditorPicturesTest,
                          testing::Combine (testing::ValuesIn (editorStates()), testing::ValuesIn (sizes)),
                          [] (const auto& tested)
                          { return pictureName (tested.param).replaceCharacter ('-', '_').toStdString(); });
