// The private clipboard over the real QClipboard (offscreen platform).
#include "platform/ui/ZoClipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

char const kPrivate[] = "application/x-zoevents-1";

std::string Put(std::string const& text)
{
    // As the callers do: the length counts the terminating NUL.
    EXPECT_TRUE(PutToClipboard(text.c_str(), text.size() + 1, 1));
    return text;
}

class Clipboard : public ::testing::Test {
protected:
    void TearDown() override { QGuiApplication::clipboard()->clear(); }
};

} // namespace

TEST_F(Clipboard, RoundTripThroughThePrivateFormat)
{
    std::string const text = Put("<eventsClipboard><event><name>P\xC3\xBCmp</name></event></eventsClipboard>");

    QMimeData const* mime = QGuiApplication::clipboard()->mimeData();
    ASSERT_NE(mime, nullptr);
    EXPECT_EQ(mime->data(kPrivate).toStdString(), text) << "the NUL is not stored";
    EXPECT_EQ(mime->text().toStdString(), text) << "other programs read it as plain text";

    std::string buffer = "left over";
    int const n = GetFromClipboard(buffer, 1);
    EXPECT_EQ(n, static_cast<int>(text.size()) + 1);
    EXPECT_EQ(buffer.size(), static_cast<std::size_t>(n));
    EXPECT_EQ(buffer.back(), '\0');
    EXPECT_STREQ(buffer.c_str(), text.c_str());

    // A length without the NUL stores all bytes.
    ASSERT_TRUE(PutToClipboard("abc", 3, 1));
    EXPECT_EQ(GetFromClipboard(buffer, 1), 4);
    EXPECT_STREQ(buffer.c_str(), "abc");
}

TEST_F(Clipboard, PrivateFormatWinsAndPlainTextIsTheFallback)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    std::string buffer;

    // Plain text put there by another program.
    clipboard->setText(QStringLiteral("<eventsTimeTableClipboard/>"));
    EXPECT_EQ(GetFromClipboard(buffer, 1), 28);
    EXPECT_STREQ(buffer.c_str(), "<eventsTimeTableClipboard/>");

    // When both are offered the private bytes are taken as they are.
    auto* both = new QMimeData;
    both->setData(kPrivate, QByteArray("<actionClipboard/>"));
    both->setText(QStringLiteral("something else"));
    clipboard->setMimeData(both);
    EXPECT_EQ(GetFromClipboard(buffer, 1), 19);
    EXPECT_STREQ(buffer.c_str(), "<actionClipboard/>");

    // Another selector has its own format; selector 1 then reads the plain text.
    ASSERT_TRUE(PutToClipboard("two", 4, 2));
    EXPECT_TRUE(clipboard->mimeData()->hasFormat("application/x-zoevents-2"));
    EXPECT_FALSE(clipboard->mimeData()->hasFormat(kPrivate));
    EXPECT_EQ(GetFromClipboard(buffer, 1), 4);
    EXPECT_STREQ(buffer.c_str(), "two");
}

TEST_F(Clipboard, NothingUsableAndGarbageNeverCrash)
{
    QClipboard* clipboard = QGuiApplication::clipboard();
    std::string buffer = "stale";

    clipboard->clear();
    EXPECT_LT(GetFromClipboard(buffer, 1), 1);
    EXPECT_TRUE(buffer.empty());

    // Only a foreign format.
    auto* image = new QMimeData;
    image->setData(QStringLiteral("image/png"), QByteArray("\x89PNG\r\n\x1A\n", 8));
    clipboard->setMimeData(image);
    EXPECT_LT(GetFromClipboard(buffer, 1), 1);

    // Empty texts count as nothing.
    clipboard->setText(QString());
    EXPECT_LT(GetFromClipboard(buffer, 1), 1);
    ASSERT_TRUE(PutToClipboard("", 1, 1));
    EXPECT_LT(GetFromClipboard(buffer, 1), 1);
    EXPECT_TRUE(PutToClipboard(nullptr, 0, 1));
    EXPECT_FALSE(PutToClipboard(nullptr, 5, 1));

    // Malformed UTF-8 and embedded NULs go through the private format byte for byte.
    char const garbage[] = {'\xFF', '\xFE', '<', '\0', 'x', '\xC3', '\0'};
    ASSERT_TRUE(PutToClipboard(garbage, sizeof garbage, 1));
    int const n = GetFromClipboard(buffer, 1);
    ASSERT_EQ(n, 7);
    EXPECT_EQ(std::memcmp(buffer.data(), garbage, 6), 0);
    EXPECT_EQ(buffer[6], '\0');
}
