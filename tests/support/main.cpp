#include "platform/tools/ZoLanguage.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoModal.h"

#include <QApplication>
#include <gtest/gtest.h>

// zoevents_tests [--lang de] [gtest options]: English unless another language is asked
// for, whatever the system's locale, so that a run is the same on every machine.
int main(int argc, char** argv)
{
    QString const language = ZoTakeLanguageOption(argc, argv);
    ZoApplyLanguage(language.isEmpty() ? QStringLiteral("en") : language);
    if (qgetenv("QT_QPA_PLATFORM").isEmpty())
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    ZoInstallQtTranslations();
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
