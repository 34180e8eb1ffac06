// How the program's pictures are read.
#include "widgets/pictures.h"

#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace spellwick {
namespace {

std::string MappedFiles() {
    std::ostringstream text;
    text << std::ifstream("/proc/self/maps").rdbuf();
    return text.str();
}

TEST(ReadPicture, LoadsThePictureWithoutThePlugInsOfTheToolkit) {
    const QPixmap icon = ReadPicture(QStringLiteral(":/pictures/spellwick-48.png"));
    EXPECT_EQ(icon.size(), QSize(48, 48));
    EXPECT_TRUE(icon.hasAlphaChannel());
    const std::string files = MappedFiles();
    ASSERT_THAT(files, testing::HasSubstr("libQt6Gui"));
    EXPECT_THAT(files, testing::Not(testing::HasSubstr("/imageformats/")));
}

TEST(ReadPicture, UnknownName_IsNull) {
    EXPECT_TRUE(ReadPicture(QStringLiteral(":/pictures/none.png")).isNull());
}

TEST(Pictures, SmallReagents_AreSmallerCellsOfTheSameStrip) {
    Pictures pictures(1.0);
    const PictureStrip& small = pictures.SmallReagents();
    EXPECT_FALSE(small.Strip().isNull());
    EXPECT_LT(small.CellSize().height(), pictures.Reagents().CellSize().height());
    EXPECT_EQ(&pictures.SmallReagents(), &small);
}

}  // namespace
}  // namespace spellwick
