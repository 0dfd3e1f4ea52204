// Images: every image name and bitmap number the dialogs use resolves to a drawn image of the
// right size; missing images fall back; greying and strips.
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/ui/ZoIcons.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// Restores the image folder when a test changed it.
struct ImageFolderGuard {
    ~ImageFolderGuard() { ZoVelmoraSetup::instance().SetImageFolder(L""); }
};

bool HasTransparentCorner(QPixmap const& pixmap)
{
    return qAlpha(pixmap.toImage().pixel(0, 0)) == 0;
}

} // namespace

TEST(Icons, NamedImagesOfTheImageFolder)
{
    struct Named {
        wchar_t const* name;
        int size;
    };
    Named const images[] = {
        {L"SYSTEM-event_16.png", 16}, {L"SYSTEM-event_16_grayed.png", 16}, {L"OK-16.png", 16},
        {L"CANCEL-16.png", 16},       {L"NEW-16.png", 16},                  {L"MODIFY-16.png", 16},
        {L"REMOVE-16.png", 16},       {L"MAIL-48.png", 48},                 {L"LAUNCH-WEB-48.png", 48},
        {L"PROGRAM-48.png", 48},      {L"WIZARD-16.png", 16},               {L"SEARCH-16.png", 16},
    };
    for (Named const& image : images) {
        QPixmap const pixmap = ZoImagePixmap(image.name);
        ASSERT_FALSE(pixmap.isNull()) << QString::fromWCharArray(image.name).toStdString();
        EXPECT_EQ(pixmap.size(), QSize(image.size, image.size));
        EXPECT_TRUE(HasTransparentCorner(pixmap));
        EXPECT_FALSE(ZoImageIcon(image.name).isNull());
    }
    EXPECT_EQ(ZoVelmoraSetup::instance().getImageFilePath(L"OK-16.png"), L":/images/OK-16.png");
    EXPECT_FALSE(ZoVelmoraSetup::instance().ProgramIcon().isNull());
    EXPECT_EQ(ZoVelmoraSetup::instance().ProgramIcon().availableSizes().size(), 3);
}

TEST(Icons, ImageFolderOfTheHostAndFallbacks)
{
    ImageFolderGuard guard;
    QTemporaryDir folder;
    ASSERT_TRUE(folder.isValid());
    QImage own(16, 16, QImage::Format_ARGB32);
    own.fill(QColor(10, 20, 30));
    ASSERT_TRUE(own.save(QDir(folder.path()).filePath("OK-16.png")));
    ZoVelmoraSetup::instance().SetImageFolder(folder.path().toStdWString());

    // The host's own file wins.
    EXPECT_EQ(ZoImagePixmap(L"OK-16.png").toImage().pixel(5, 5), QColor(10, 20, 30).rgb());
    // A file the host's folder lacks comes from the module's copy.
    EXPECT_EQ(ZoImagePixmap(L"CANCEL-16.png").size(), QSize(16, 16));
    // A name nobody has falls back to a standard icon, sized as the name says.
    EXPECT_FALSE(ZoImageIcon(L"NOWHERE-16.png").isNull());
    QPixmap const fallback = ZoImagePixmap(L"NOWHERE-48.png");
    ASSERT_FALSE(fallback.isNull());
    EXPECT_LE(fallback.width(), 48);
    EXPECT_FALSE(ZoImagePixmap(nullptr).isNull());
}

TEST(Icons, BitmapResourcesByNumber)
{
    struct Bitmap {
        int id;
        QSize size;
    };
    Bitmap const bitmaps[] = {
        {2402, {16, 16}}, {2403, {16, 16}}, {2404, {16, 16}}, {2405, {16, 16}}, {2406, {16, 16}},
        {2407, {16, 16}}, {2408, {16, 16}}, {2416, {16, 16}}, {2417, {16, 16}}, {2419, {16, 16}},
        {2426, {48, 16}}, {2439, {48, 48}}, {2440, {48, 48}}, {2441, {48, 48}}, {2442, {48, 48}},
        {2443, {48, 48}}, {2445, {48, 48}}, {2446, {48, 48}}, {2447, {48, 48}}, {2448, {48, 48}},
        {1409, {48, 48}},
    };
    for (Bitmap const& bitmap : bitmaps) {
        QPixmap const pixmap = ZoBitmapPixmap(bitmap.id);
        ASSERT_FALSE(pixmap.isNull()) << bitmap.id;
        EXPECT_EQ(pixmap.size(), bitmap.size) << bitmap.id;
        EXPECT_TRUE(HasTransparentCorner(pixmap)) << bitmap.id;
        EXPECT_FALSE(ZoBitmapIcon(bitmap.id).isNull());
    }
    EXPECT_TRUE(ZoBitmapPixmap(2444).isNull());
    EXPECT_TRUE(ZoBitmapIcon(-1).isNull());
}

TEST(Icons, StripsAndGreying)
{
    // The time-table kinds strip (three images) and the editor's four-kind strip.
    for (int kind = 0; kind < 3; ++kind)
        EXPECT_EQ(ZoBitmapStripIcon(2426, kind).availableSizes().value(0), QSize(16, 16)) << kind;
    EXPECT_TRUE(ZoBitmapStripIcon(2426, 3).isNull());
    for (int kind = 0; kind < 4; ++kind)
        EXPECT_EQ(ZoTimeTableKindPixmap(kind).size(), QSize(16, 16)) << kind;
    EXPECT_TRUE(ZoTimeTableKindPixmap(4).isNull());
    EXPECT_TRUE(ZoTimeTableKindPixmap(-1).isNull());
    // The day program is image 0 of 2426 and image 1 of the editor's strip (0 is "none").
    EXPECT_EQ(ZoBitmapStripIcon(2426, 0).pixmap(16).toImage().convertToFormat(QImage::Format_ARGB32),
              ZoTimeTableKindPixmap(1).toImage().convertToFormat(QImage::Format_ARGB32));

    QPixmap const event = ZoImagePixmap(L"SYSTEM-event_16.png");
    QImage const grey = ZoGrayed(event).toImage().convertToFormat(QImage::Format_ARGB32);
    QImage const colour = event.toImage().convertToFormat(QImage::Format_ARGB32);
    ASSERT_EQ(grey.size(), colour.size());
    bool anyColour = false;
    for (int y = 0; y < grey.height(); ++y) {
        for (int x = 0; x < grey.width(); ++x) {
            QRgb const g = grey.pixel(x, y);
            QRgb const c = colour.pixel(x, y);
            EXPECT_EQ(qAlpha(g), qAlpha(c));
            if (qAlpha(g) > 0) {
                EXPECT_EQ(qRed(g), qGreen(g));
                EXPECT_EQ(qGreen(g), qBlue(g));
            }
            anyColour = anyColour || (qAlpha(c) == 255 && qRed(c) != qBlue(c));
        }
    }
    EXPECT_TRUE(anyColour) << "the enabled event image is in colour";
    EXPECT_TRUE(ZoGrayed(QPixmap()).isNull());
}
