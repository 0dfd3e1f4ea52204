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

class Clipboard : public ::testing::Test {
protected:
    void SetUp() override { QGuiApplication::clipboard()->clear(); } // other tests copy too
    void TearDown() override { SetUp(); }
    // What selector 1 reads back: the bytes before the NUL the count includes.
    std::string Get()
    {
        std::string buffer = "stale";
        int const n = GetFromClipboard(buffer, 1);
        if (n < 1)
            return buffer.empty() ? "(nothing)" : "(stale buffer)";
        EXPECT_EQ(buffer.size(), static_cast<std::size_t>(n));
        EXPECT_EQ(buffer.back(), '\0');
        return buffer.c_str();
    }
};

} // namespace

TEST_F(Clipboard, PrivateFormatWithPlainTextFallback)
{
    // As the callers do, the length counts the terminating NUL, which is not stored.
    std::string const text = "<eventsClipboard><event><name>P\xC3\xBCmp</name></event></eventsClipboard>";
    ASSERT_TRUE(PutToClipboard(text.c_str(), text.size() + 1, 1));
    QMimeData const* mime = QGuiApplication::clipboard()->mimeData();
    EXPECT_EQ(mime->data(kPrivate).toStdString(), text);
    EXPECT_EQ(mime->text().toStdString(), text) << "other programs read it as plain text";
    EXPECT_EQ(Get(), text);

    // Plain text put there by another program is read when the private format is absent;
    // when both are offered the private bytes win.
    QGuiApplication::clipboard()->setText(QStringLiteral("<eventsTimeTableClipboard/>"));
    EXPECT_EQ(Get(), "<eventsTimeTableClipboard/>");
    auto* both = new QMimeData;
    both->setData(kPrivate, QByteArray("<actionClipboard/>"));
    both->setText(QStringLiteral("something else"));
    QGuiApplication::clipboard()->setMimeData(both);
    EXPECT_EQ(Get(), "<actionClipboard/>");
}

TEST_F(Clipboard, NothingUsableAndGarbageNeverCrash)
{
    EXPECT_EQ(Get(), "(nothing)");
    auto* image = new QMimeData;
    image->setData(QStringLiteral("image/png"), QByteArray("\x89PNG\r\n\x1A\n", 8));
    QGuiApplication::clipboard()->setMimeData(image);
    EXPECT_EQ(Get(), "(nothing)") << "only a foreign format";
    ASSERT_TRUE(PutToClipboard("", 1, 1));
    EXPECT_EQ(Get(), "(nothing)") << "an empty text";
    EXPECT_TRUE(PutToClipboard(nullptr, 0, 1));
    EXPECT_FALSE(PutToClipboard(nullptr, 5, 1));

    // Malformed UTF-8 and embedded NULs go through the private format byte for byte.
    char const garbage[] = {'\xFF', '\xFE', '<', '\0', 'x', '\xC3'};
    ASSERT_TRUE(PutToClipboard(garbage, sizeof garbage, 1));
    std::string buffer;
    ASSERT_EQ(GetFromClipboard(buffer, 1), 7);
    EXPECT_EQ(std::memcmp(buffer.data(), garbage, 6), 0);
    EXPECT_EQ(buffer[6], '\0');
}
