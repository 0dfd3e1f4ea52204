// Images: the module's own load at the size their names give, the host's image folder wins,
// missing ones fall back; strips and greying. (ZoTextsTest checks the names the sources use.)
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/ui/ZoIcons.h"

#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(Icons, BuiltInImagesLoadTransparentAtTheirSize)
{
    // "MAIL-48.png" is 48 pixels square; a bitmap ("bmp-2402.png") is loaded by its number.
    QRegularExpression const named(QStringLiteral("[-_](16|32|48)[-_.]")), bitmap(QStringLiteral("^bmp-(\\d+)\\."));
    for (QString const& file : QDir(QStringLiteral(":/images")).entryList()) {
        QRegularExpressionMatch const number = bitmap.match(file), size = named.match(file);
        QPixmap const pixmap = number.hasMatch() ? ZoBitmapPixmap(number.captured(1).toInt())
                                                 : ZoImagePixmap(file.toStdWString().c_str());
        ASSERT_FALSE(pixmap.isNull()) << file.toStdString();
        EXPECT_EQ(qAlpha(pixmap.toImage().pixel(0, 0)), 0) << file.toStdString() << " has no transparent corner";
        int const side = size.captured(1).toInt();
        EXPECT_EQ(pixmap.size(), size.hasMatch() ? QSize(side, side) : pixmap.size()) << file.toStdString();
    }
    EXPECT_EQ(ZoBitmapPixmap(2426).size(), QSize(48, 16)) << "the strip of three kinds";
    EXPECT_TRUE(ZoBitmapPixmap(2444).isNull());
    EXPECT_TRUE(ZoBitmapIcon(-1).isNull());
    EXPECT_EQ(ZoVelmoraSetup::instance().ProgramIcon().availableSizes().size(), 3);
}

TEST(Icons, ImageFolderOfTheHostAndFallbacks)
{
    QTemporaryDir folder;
    QImage own(16, 16, QImage::Format_ARGB32);
    own.fill(QColor(10, 20, 30));
    ASSERT_TRUE(own.save(QDir(folder.path()).filePath("OK-16.png")));
    ZoVelmoraSetup::instance().SetImageFolder(folder.path().toStdWString());

    EXPECT_EQ(ZoImagePixmap(L"OK-16.png").toImage().pixel(5, 5), QColor(10, 20, 30).rgb()) << "the host's file wins";
    EXPECT_EQ(ZoImagePixmap(L"CANCEL-16.png").size(), QSize(16, 16)) << "the host lacks it: the module's copy";
    // A name nobody has falls back to a standard icon, at most as large as the name says.
    EXPECT_FALSE(ZoImageIcon(L"NOWHERE-16.png").isNull());
    QPixmap const fallback = ZoImagePixmap(L"NOWHERE-48.png");
    EXPECT_TRUE(!fallback.isNull() && fallback.width() <= 48);
    EXPECT_FALSE(ZoImagePixmap(nullptr).isNull());
    ZoVelmoraSetup::instance().SetImageFolder(L"");
}

TEST(Icons, StripsAndGreying)
{
    EXPECT_TRUE(ZoBitmapStripIcon(2426, 3).isNull());
    for (int kind = 0; kind < 4; ++kind)
        EXPECT_EQ(ZoTimeTableKindPixmap(kind).size(), QSize(16, 16)) << kind;
    EXPECT_TRUE(ZoTimeTableKindPixmap(4).isNull());
    // The day program is image 0 of 2426 and image 1 of the editor's strip (0 is "none").
    EXPECT_EQ(ZoBitmapStripIcon(2426, 0).pixmap(16).toImage().convertToFormat(QImage::Format_ARGB32),
              ZoTimeTableKindPixmap(1).toImage().convertToFormat(QImage::Format_ARGB32));

    // Greying keeps the shape (the alpha channel) and drops the colours.
    QImage const colour = ZoImagePixmap(L"SYSTEM-event_16.png").toImage();
    QImage const grey = ZoGrayed(QPixmap::fromImage(colour)).toImage();
    EXPECT_FALSE(colour.allGray());
    EXPECT_TRUE(grey.allGray());
    EXPECT_EQ(grey.convertToFormat(QImage::Format_Alpha8), colour.convertToFormat(QImage::Format_Alpha8));
    EXPECT_TRUE(ZoGrayed(QPixmap()).isNull());
}
