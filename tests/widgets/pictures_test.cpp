// How the program's pictures are read.
#include "widgets/pictures.h"

#include <QImage>
#include <QImageReader>
#include <QResource>
#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/file_bytes.h"

namespace spellwick {
namespace {

// What the first page shows, at the usual density.
constexpr std::array kAtStart{"page_necromancer", "page_paladin",  "reagents",    "reagents_small",
                              "spells_colour_1",  "spells_grey_1", "spellwick-48"};

QString UnpackedFile(const char* name) {
    return QStringLiteral(":/pictures/%1.argb").arg(QLatin1String(name));
}

TEST(ReadPicture, OfTheStart_HasThePixelsOfItsPng) {
    for (const char* name : kAtStart) {
        SCOPED_TRACE(name);
        QImageReader reader(QStringLiteral(SPELLWICK_SOURCE_FOLDER "/data/pictures/%1.png")
                                .arg(QLatin1String(name)),
                            "png");
        reader.setAutoDetectImageFormat(false);
        QImage drawn = reader.read();
        ASSERT_FALSE(drawn.isNull());
        drawn.convertTo(QImage::Format_ARGB32_Premultiplied);
        const QPixmap read = ReadPicture(QLatin1String(name));
        EXPECT_TRUE(read.hasAlphaChannel());
        EXPECT_EQ(read.toImage().convertedTo(QImage::Format_ARGB32_Premultiplied), drawn);
    }
}

// A start maps whatever lies around what it reads.
TEST(ReadPicture, OfTheStart_LieTogetherAndUncompressed) {
    constexpr std::ptrdiff_t kBetween = 64;
    std::vector<std::pair<const uchar*, const uchar*>> places;
    for (const char* name : kAtStart) {
        const QResource picture(UnpackedFile(name));
        ASSERT_TRUE(picture.isValid()) << name;
        EXPECT_EQ(picture.compressionAlgorithm(), QResource::NoCompression) << name;
        places.emplace_back(picture.data(), picture.data() + picture.size());
    }
    std::ranges::sort(places);
    for (std::size_t i = 1; i < places.size(); ++i) {
        EXPECT_GE(places[i].first, places[i - 1].second);
        EXPECT_LE(places[i].first - places[i - 1].second, kBetween);
    }
}

TEST(ReadPicture, Others_AreReadWithoutThePlugInsOfTheToolkit) {
    const QPixmap page = ReadPicture(QStringLiteral("spells_colour_2"));
    EXPECT_EQ(page.size(), ReadPicture(QStringLiteral("spells_colour_1")).size());
    EXPECT_TRUE(page.hasAlphaChannel());
    const std::string files = BytesOf("/proc/self/maps");
    ASSERT_THAT(files, testing::HasSubstr("libQt6Gui"));
    EXPECT_THAT(files, testing::Not(testing::HasSubstr("/imageformats/")));
}

TEST(ReadPicture, UnknownName_IsNull) {
    EXPECT_TRUE(ReadPicture(QStringLiteral("none")).isNull());
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
