#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoModal.h"

#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qgetenv("QT_QPA_PLATFORM").isEmpty())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);

    // A test that forgets to script a message box or a nested dialog fails instead of
    // waiting forever for a click that never comes.
    ZoSetMessageAnswerer([](ZoMessage const& message) {
        ADD_FAILURE() << "unexpected message " << message.textId << ": "
                      << QString::fromStdWString(message.text).toStdString();
        return message.buttons == ZoMsgButtons::YesNo ? ZoAnswer::No : ZoAnswer::Ok;
    });
    ZoSetModalRunner([](QDialog& dialog) {
        ADD_FAILURE() << "unexpected modal dialog " << dialog.metaObject()->className();
        return int(QDialog::Rejected);
    });
    return RUN_ALL_TESTS();
}
