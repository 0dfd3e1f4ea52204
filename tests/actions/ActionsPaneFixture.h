#pragma once
// An action pane driven offscreen inside a host dialog (which receives the OK and Cancel
// that the pane passes on), over an event whose eight lists are given as XML.
#include "actions/ZoActionEditors.h"
#include "actions/ZoActionsListModel.h"
#include "actions/ZoEDlgEventActionsCfg.h"
#include "config/XmlDocument.h"

#include "platform/tools/ZoTexts.h"
#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QDialog>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace actions_test {

using XmlNode = XmlDocument::XmlNode;

inline char const* const kSideTags[2] = {"actions", "clientActions"};
inline char const* const kMomentTags[4] = {"activate", "while", "deactivate", "acknowledge"};

// One action of each kind, as a moment holds them (ids {A-1}.. in this order).
inline char const* const kEveryKind =
    "<force><id>{A-1}</id><variable>[BOILER.SP]</variable><value>10</value></force>"
    "<shellExecute><id>{A-2}</id><command>a.exe</command></shellExecute>"
    "<screen><id>{A-3}</id><name>Overview</name></screen>"
    "<report><id>{A-4}</id><name>Daily</name></report>"
    "<device><id>{A-5}</id><name>BOILER</name></device>"
    "<beep><id>{A-6}</id></beep>"
    "<mail><id>{A-7}</id><message>Boiler hot</message></mail>"
    "<sms><id>{A-8}</id><message>Call me</message></sms>"
    "<launchWeb><id>{A-9}</id><url>http://plant</url><window>TAB</window></launchWeb>";

// Restores the action editors when it goes.
class EditorRunnerGuard {
public:
    explicit EditorRunnerGuard(ZoActionEditorRunner runner)
        : m_previous(ZoGetActionEditorRunner())
    {
        ZoSetActionEditorRunner(std::move(runner));
    }
    ~EditorRunnerGuard() { ZoSetActionEditorRunner(m_previous); }

private:
    ZoActionEditorRunner m_previous;
};

class PaneTest : public ::testing::Test {
protected:
    // Opens the pane of side (0 server, 1 client) and moment on a moment holding `inner`.
    ZoEDlgEventActionsCfg& Open(int side, int moment, std::string const& inner)
    {
        std::string xml = "<event>";
        for (int s = 0; s < 2; ++s) {
            xml += std::string("<") + kSideTags[s] + ">";
            for (int m = 0; m < 4; ++m) {
                std::string const body = (s == side && m == moment) ? inner : std::string();
                xml += std::string("<") + kMomentTags[m] + ">" + body + "</" + kMomentTags[m] + ">";
            }
            xml += std::string("</") + kSideTags[s] + ">";
        }
        xml += "</event>";
        EXPECT_TRUE(m_event.Parse(xml.c_str()));
        m_moment = m_event.Root()->Child(side ? L"clientActions" : L"actions")
                       ->Child(QString::fromLatin1(kMomentTags[moment]).toStdWString());
        m_host = std::make_unique<QDialog>();
        m_host->setResult(-1);
        m_pane = new ZoEDlgEventActionsCfg(m_host.get());
        auto* layout = new QVBoxLayout(m_host.get());
        layout->addWidget(m_pane);
        m_pane->Initialize(moment, m_moment, &m_users, side == 1);
        m_host->resize(640, 300);
        m_host->show();
        m_list = m_pane->findChild<QTreeView*>("actionsList");
        m_tester = std::make_unique<QAbstractItemModelTester>(m_list->model(),
                                                              QAbstractItemModelTester::FailureReportingMode::Fatal);
        return *m_pane;
    }

    QAbstractItemModel* Model() const { return m_list->model(); }
    // "kind:summary" of every row, joined by "|". The table's texts in them are read back
    // into English, so that a case reads the same in every language of the run.
    std::string Rows() const
    {
        std::string out;
        for (int row = 0; row < Model()->rowCount(); ++row)
            out += (row ? "|" : "") + RowText(row);
        return out;
    }
    std::string RowText(int row) const
    {
        return InEnglish(Model()->index(row, 0).data().toString()) + ":"
            + InEnglish(Model()->index(row, 1).data().toString());
    }
    // The kinds' names in the table and in English.
    static constexpr std::pair<unsigned, char const*> kKinds[] = {
        {32850, "Force"}, {32851, "Command"}, {767, "Screen"},  {32401, "Report"},   {34112, "Device"},
        {34111, "Beep"},  {34141, "Mail"},    {36276, "SMS"},   {39954, "Web page"},
    };
    // A kind's name, and a web page's window within a summary, as the English table has them.
    static std::string InEnglish(QString text)
    {
        for (auto const& [id, english] : kKinds)
            if (text == ZoText(id))
                return english;
        text.replace(ZoText(38457), QLatin1String("New browser window")).replace(ZoText(38460), QLatin1String("new tab"));
        return text.toStdString();
    }
    // The rows given as Rows() writes them, in the order the list shows them by default: by the
    // kind's name as this language shows it, then by summary, both ignoring case; descending
    // reverses kinds and ties alike. The kinds' order differs between languages, the rule does not.
    static std::string ByKind(std::vector<std::string> rows, bool descending = false)
    {
        auto const shown = [](std::string const& row) {
            QString const english = QString::fromStdString(row.substr(0, row.find(':')));
            QString kind = english;
            for (auto const& [id, name] : kKinds)
                if (english == QLatin1String(name))
                    kind = ZoText(id);
            return std::pair(kind.toCaseFolded(), QString::fromStdString(row.substr(row.find(':') + 1)).toCaseFolded());
        };
        std::stable_sort(rows.begin(), rows.end(),
                         [&](std::string const& a, std::string const& b) { return shown(a) < shown(b); });
        if (descending)
            std::reverse(rows.begin(), rows.end());
        std::string out;
        for (std::string const& row : rows)
            out += (out.empty() ? "" : "|") + row;
        return out;
    }
    // The index of the row that Rows() writes as `row`; -1 when there is none.
    int RowOf(std::string const& row) const
    {
        for (int index = 0; index < Model()->rowCount(); ++index)
            if (RowText(index) == row)
                return index;
        return -1;
    }
    // The tags of the moment's children, in document order, joined by " ".
    std::string Children() const
    {
        std::string out;
        for (XmlNode const* child = m_moment->FirstChild(); child; child = child->NextSibling())
            out += (out.empty() ? "" : " ") + QString::fromStdWString(child->Tag()).toStdString();
        return out;
    }
    void Select(std::initializer_list<int> rows) const
    {
        m_list->selectionModel()->clearSelection();
        for (int row : rows)
            m_list->selectionModel()->select(Model()->index(row, 0),
                                             QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    QPushButton* Button(char const* name) const { return m_pane->findChild<QPushButton*>(name); }
    // "N", "M", "R" for the enabled New, Modify and Remove buttons, "-" for a disabled one.
    std::string Buttons() const
    {
        return std::string(Button("newActionButton")->isEnabled() ? "N" : "-")
            + (Button("modifyActionButton")->isEnabled() ? "M" : "-")
            + (Button("removeActionButton")->isEnabled() ? "R" : "-");
    }
    // The host's result after the queued OK or Cancel of the pane: 1 OK, 0 Cancel, -1 none.
    int HostResult() const
    {
        QCoreApplication::processEvents();
        return m_host->result();
    }

    XmlDocument m_event;
    XmlDocument m_users;
    XmlNode* m_moment = nullptr;
    std::unique_ptr<QDialog> m_host;
    ZoEDlgEventActionsCfg* m_pane = nullptr;
    QTreeView* m_list = nullptr;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

} // namespace actions_test
