#pragma once
// Opens the mail or SMS editor on an action parsed from text, shown offscreen so that the
// focus can be followed, with the users document of RecipientsTestDocs.h.
#include "actions/RecipientsTestDocs.h"
#include "support/ScriptedAnswerer.h"
#include "support/XmlText.h"

#include <QAbstractItemModel>
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace recipients_test {

template <class Dialog>
class RecipientsEditorTest : public ::testing::Test {
protected:
    RecipientsEditorTest() { Load(m_users, kUsers); }

    // Creates the editor on the action without initialising it (flags may be set first).
    Dialog& Create(char const* actionXml, XmlDocument* users)
    {
        Load(m_action, actionXml);
        m_dialog = std::make_unique<Dialog>(nullptr, m_action.Root(), nullptr, users);
        return *m_dialog;
    }
    Dialog& Create(char const* actionXml) { return Create(actionXml, &m_users); }
    Dialog& Show()
    {
        m_dialog->EnsureInitialized();
        m_dialog->show();
        QApplication::setActiveWindow(m_dialog.get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
        return *m_dialog;
    }
    Dialog& Open(char const* actionXml, XmlDocument* users)
    {
        Create(actionXml, users);
        return Show();
    }
    Dialog& Open(char const* actionXml) { return Open(actionXml, &m_users); }

    template <class W>
    W* Get(char const* name) const
    {
        W* widget = m_dialog->template findChild<W*>(name);
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    // The rows of a recipients list: "[x] name" each, separated by ", ".
    std::string Checks(char const* list) const
    {
        QAbstractItemModel* model = Get<QTreeView>(list)->model();
        std::string out;
        for (int row = 0; row < model->rowCount(); ++row) {
            QModelIndex const index = model->index(row, 0);
            bool const checked = model->data(index, Qt::CheckStateRole).value<Qt::CheckState>() == Qt::Checked;
            out += (row ? ", " : "") + std::string(checked ? "[x] " : "[ ] ") + model->data(index).toString().toStdString();
        }
        return out;
    }
    // Checks or clears the row named `name` as a click on its check box would.
    void Check(char const* list, QString const& name, bool checked = true)
    {
        QAbstractItemModel* model = Get<QTreeView>(list)->model();
        for (int row = 0; row < model->rowCount(); ++row)
            if (model->index(row, 0).data().toString() == name) {
                model->setData(model->index(row, 0), checked ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
                return;
            }
        ADD_FAILURE() << "no row " << name.toStdString();
    }
    // Clicks OK and returns the result (-1 while the dialog stays open).
    int ClickOk()
    {
        m_dialog->setResult(-1);
        Get<QPushButton>("okButton")->click();
        return m_dialog->result();
    }
    std::string Action() const { return Xml(m_action.Root()); }
    std::string Focused() const
    {
        QWidget* focus = QApplication::focusWidget();
        return focus ? focus->objectName().toStdString() : std::string("(none)");
    }
    void SetMessage(QString const& text) { Get<QPlainTextEdit>("messageEdit")->setPlainText(text); }

    XmlDocument m_users;
    XmlDocument m_action;
    std::unique_ptr<Dialog> m_dialog;
};

} // namespace recipients_test
