#pragma once
// ModalScript: plays the nested modal dialogs of a test (everything run through ZoRunModal
// or ZoDialog::DoModal) without showing them.
//
// Each dialog that opens takes the next step of the script, first queued first used. A step
// is a function that receives the dialog (already initialised when it came through
// DoModal), may fill its widgets or press its buttons, and returns the dialog's result
// (QDialog::Accepted or QDialog::Rejected). When the script is empty a dialog is rejected.
// The class name of every dialog run is recorded, in order. Steps may open further
// dialogs (a step that presses a button which opens a dialog); those take the following
// steps. On destruction the runner that was installed before is put back (none: exec()).
//
//   ModalScript modal;
//   modal.Then(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
//       editor.findChild<QLineEdit*>("nameEdit")->setText("Pump");
//       return ModalScript::ClickOk(editor);
//   }));
//   list.OnAdd();
//   EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventCfg"}));
//
// Ready-made steps: ModalScript::Accept() (accept() and Accepted), ModalScript::Reject()
// (Rejected), ModalScript::ClickOk(dialog) (clicks the child "okButton" when there is one,
// else accept(); returns dialog.result(), so a dialog whose OK refuses stays Rejected).
#include "platform/ui/ZoModal.h"

#include <QAbstractButton>
#include <QDialog>
#include <QStringList>
#include <gtest/gtest.h>

#include <deque>
#include <functional>

class ModalScript {
public:
    using Step = std::function<int(QDialog&)>;

    ModalScript()
        : m_previous(ZoGetModalRunner())
    {
        ZoSetModalRunner([this](QDialog& dialog) { return Run(dialog); });
    }
    explicit ModalScript(Step step)
        : ModalScript()
    {
        Then(std::move(step));
    }
    ~ModalScript() { ZoSetModalRunner(m_previous); }
    ModalScript(ModalScript const&) = delete;
    ModalScript& operator=(ModalScript const&) = delete;

    // Appends the step for one more dialog.
    ModalScript& Then(Step step)
    {
        m_steps.push_back(std::move(step));
        return *this;
    }

    // Class names of the dialogs run so far, in order.
    QStringList const& Classes() const { return m_classes; }
    int Count() const { return static_cast<int>(m_classes.size()); }
    // Steps queued and not used yet.
    int Unused() const { return static_cast<int>(m_steps.size()); }

    static Step Accept()
    {
        return [](QDialog& dialog) {
            dialog.accept();
            return int(QDialog::Accepted);
        };
    }
    static Step Reject()
    {
        return [](QDialog& dialog) {
            dialog.reject();
            return int(QDialog::Rejected);
        };
    }
    static int ClickOk(QDialog& dialog)
    {
        dialog.setResult(QDialog::Rejected);
        if (auto* ok = dialog.findChild<QAbstractButton*>(QStringLiteral("okButton")))
            ok->click();
        else
            dialog.accept();
        return dialog.result();
    }
    // A step for a dialog of class D; a dialog of another class fails the test and is
    // rejected.
    template <class D>
    static Step As(std::function<int(D&)> step)
    {
        return [step](QDialog& dialog) {
            auto* typed = dynamic_cast<D*>(&dialog);
            if (!typed) {
                ADD_FAILURE() << "ModalScript: expected a " << D::staticMetaObject.className()
                              << ", got a " << dialog.metaObject()->className();
                return int(QDialog::Rejected);
            }
            return step(*typed);
        };
    }

private:
    int Run(QDialog& dialog)
    {
        m_classes << QString::fromLatin1(dialog.metaObject()->className());
        if (m_steps.empty())
            return QDialog::Rejected;
        Step const step = std::move(m_steps.front());
        m_steps.pop_front();
        return step(dialog);
    }

    ZoModalRunner m_previous;
    std::deque<Step> m_steps;
    QStringList m_classes;
};
