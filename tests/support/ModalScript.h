#pragma once
// ModalScript: plays the nested modal dialogs of a test (ZoRunModal, ZoDialog::DoModal)
// without showing them. Each dialog takes the next step, first queued first used, and is
// rejected when none is left. A step receives the dialog (already initialised when it came
// through DoModal), may fill its widgets or press its buttons (a dialog opened from there
// takes the following step) and returns QDialog::Accepted or Rejected. The class name of
// every dialog run is recorded. On destruction the runner installed before is put back.
//
//   ModalScript modal(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
//       editor.findChild<QLineEdit*>("nameEdit")->setText("Pump");
//       return ModalScript::ClickOk(editor);
//   }));
//   list.OnAdd();
//   EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventCfg"}));
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

    explicit ModalScript(Step step = {})
        : m_previous(ZoGetModalRunner())
    {
        if (step)
            Then(std::move(step));
        ZoSetModalRunner([this](QDialog& dialog) {
            m_classes << QString::fromLatin1(dialog.metaObject()->className());
            if (m_steps.empty())
                return int(QDialog::Rejected);
            Step const next = std::move(m_steps.front());
            m_steps.pop_front();
            return next(dialog);
        });
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

    static Step Accept() { return [](QDialog& dialog) { dialog.accept(); return int(QDialog::Accepted); }; }
    static Step Reject() { return [](QDialog& dialog) { dialog.reject(); return int(QDialog::Rejected); }; }
    // Clicks the dialog's "okButton" (accept() when it has none); a dialog whose OK refuses
    // stays Rejected.
    static int ClickOk(QDialog& dialog)
    {
        dialog.setResult(QDialog::Rejected);
        if (auto* ok = dialog.findChild<QAbstractButton*>(QStringLiteral("okButton")))
            ok->click();
        else
            dialog.accept();
        return dialog.result();
    }
    // A step for a dialog of class D; a dialog of another class fails the test and is rejected.
    template <class D>
    static Step As(std::function<int(D&)> step)
    {
        return [step](QDialog& dialog) {
            auto* typed = dynamic_cast<D*>(&dialog);
            if (!typed)
                ADD_FAILURE() << "ModalScript: expected a " << D::staticMetaObject.className() << ", got a "
                              << dialog.metaObject()->className();
            return typed ? step(*typed) : int(QDialog::Rejected);
        };
    }

private:
    ZoModalRunner m_previous;
    std::deque<Step> m_steps;
    QStringList m_classes;
};
