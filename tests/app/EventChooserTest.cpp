#include "EventChoiceModel.h"
#include "EventChooserDlg.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>
#include <QTreeView>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

struct Choice {
    char const* name;
    char const* description;
};

// Names that differ by case and accents, names equal without regard to case (which keep
// their document order), characters whose case folding is not their lower case (final
// sigma, long s, the micro sign) and one outside the basic plane.
std::vector<Choice> const kChoices = {
    {"pump 2", "Water"},        {"Pump 10", ""},        {"ÉCLAIR", "Bakery"},    {"eclair", ""},
    {"Éclair", "Bakery"},       {"zèbre", "zoo"},       {"Zebra", "Zoo"},        {"ähnlich", ""},
    {"Ahnlich", "water"},       {"straße", ""},         {"STRASSE", "Street"},   {"ΣΟΦΟΣ", ""},
    {"σοφος", ""},              {"σοφοσ", "Greek"},     {"ſtar", ""},            {"Star", "sky"},
    {"µ-meter", ""},            {"μ-METER", "zoo"},     {"alpha", ""},           {"ALPHA", "Water"},
    {"Alpha", ""},              {"_under", ""},         {"123", "Numbers"},      {"𐐀 deseret", ""},
    {"𐐨 DESERET", ""},         {"Ωmega", ""},          {"ωMEGA", "sky"},        {"", "no name"},
};

std::string EventsXml()
{
    std::string xml = "<events>";
    for (std::size_t i = 0; i < kChoices.size(); ++i) {
        xml += "<event><name>" + std::string(kChoices[i].name) + "</name><description>" + kChoices[i].description +
            "</description>";
        if (i == 3)
            xml += "<disabled>T</disabled>";
        xml += "</event>";
        if (i == 5)
            xml += "<comment>not an event</comment>";
    }
    return xml + "</events>";
}

// The texts of a column, top to bottom (UTF-8, for readable failures).
std::vector<std::string> RowsOf(QAbstractItemModel const& model, int column)
{
    std::vector<std::string> rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows.push_back(model.index(row, column).data().toString().toStdString());
    return rows;
}

// What the chooser showed before it kept its own order: Qt's proxy sorting and filtering the
// rows without regard to case. The rows' order and filter must stay exactly that one's.
struct Reference {
    Reference()
    {
        source.setColumnCount(2);
        for (Choice const& choice : kChoices)
            source.appendRow({new QStandardItem(QString::fromUtf8(choice.name)),
                              new QStandardItem(QString::fromUtf8(choice.description))});
        proxy.setSourceModel(&source);
        proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
        proxy.setSortCaseSensitivity(Qt::CaseInsensitive);
        proxy.setFilterKeyColumn(0);
        proxy.sort(0, Qt::AscendingOrder);
    }
    std::vector<std::string> Rows(int column = 0) const { return RowsOf(proxy, column); }
    QStandardItemModel source;
    QSortFilterProxyModel proxy;
};

struct ParsedEvents {
    ParsedEvents() { EXPECT_TRUE(doc.Parse(EventsXml().c_str())); }
    XmlDocument doc;
};

// The chooser over the events, shown.
struct Chooser : ParsedEvents {
    Chooser()
    {
        dialog.EnsureInitialized();
        dialog.show();
        filter = dialog.findChild<QLineEdit*>("filterEdit");
        list = dialog.findChild<QTreeView*>("eventsList");
        ok = dialog.findChild<QPushButton*>("okButton");
        tester = std::make_unique<QAbstractItemModelTester>(list->model(),
                                                            QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    std::vector<std::string> Rows(int column = 0) const { return RowsOf(*list->model(), column); }
    std::string Selected() const
    {
        QModelIndexList const rows = list->selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.first().data().toString().toStdString() : std::string();
    }

    EventChooserDlg dialog{nullptr, doc.Root()};
    QLineEdit* filter = nullptr;
    QTreeView* list = nullptr;
    QPushButton* ok = nullptr;
    std::unique_ptr<QAbstractItemModelTester> tester;
};

} // namespace

TEST(EventChooser, RowsAreInTheOrderOfQtsComparisonWithoutCaseAndTheFilterMatchesAsItsDid)
{
    Chooser chooser;
    Reference reference;
    ASSERT_EQ(chooser.Rows().size(), kChoices.size());
    EXPECT_EQ(chooser.Rows(), reference.Rows());
    EXPECT_EQ(chooser.Rows(1), reference.Rows(1));
    EXPECT_EQ(chooser.Selected(), reference.Rows().front());

    for (char const* text : {"É", "éCL", "ss", "ß", "Σ", "ς", "ſ", "S", "µ", "Μ", "ω", "𐐨", "𐐀 D", "a", "pump 1", " ",
                             "nothing", "", "ALPHA"}) {
        QString const filter = QString::fromUtf8(text);
        chooser.filter->setText(filter);
        reference.proxy.setFilterFixedString(filter);
        EXPECT_EQ(chooser.Rows(), reference.Rows()) << text;
    }
}

TEST(EventChooser, HeadingClicksSortStablyLikeTheProxyDid)
{
    Chooser chooser;
    Reference reference;
    QHeaderView* header = chooser.list->header();
    // Description ascending, descending, then name descending and ascending: rows of equal
    // texts keep the order they had.
    for (auto [column, order] : {std::pair{1, Qt::AscendingOrder}, {1, Qt::DescendingOrder},
                                 {0, Qt::DescendingOrder}, {1, Qt::AscendingOrder}, {0, Qt::AscendingOrder}}) {
        header->setSortIndicator(column, order);
        reference.proxy.sort(column, order);
        EXPECT_EQ(chooser.Rows(), reference.Rows()) << column << " " << order;
        EXPECT_EQ(chooser.Rows(1), reference.Rows(1)) << column << " " << order;
    }
    // A filter keeps the order of the heading.
    header->setSortIndicator(0, Qt::DescendingOrder);
    reference.proxy.sort(0, Qt::DescendingOrder);
    chooser.filter->setText("e");
    reference.proxy.setFilterFixedString("e");
    EXPECT_EQ(chooser.Rows(), reference.Rows());
}

TEST(EventChooser, TheSelectionSurvivesAFilterThatShowsItElseTheFirstRowIsSelected)
{
    Chooser chooser;
    ASSERT_TRUE(chooser.dialog.SelectName("Zebra"));
    chooser.filter->setText("e");
    EXPECT_EQ(chooser.Selected(), "Zebra");
    chooser.filter->setText("eb");
    EXPECT_EQ(chooser.Selected(), "Zebra");
    chooser.filter->setText("pump");
    EXPECT_EQ(chooser.Selected(), "Pump 10");
    EXPECT_TRUE(chooser.ok->isEnabled());
    chooser.filter->setText("nothing");
    EXPECT_EQ(chooser.list->model()->rowCount(), 0);
    EXPECT_FALSE(chooser.ok->isEnabled());
    chooser.filter->clear();
    EXPECT_EQ(chooser.Selected(), chooser.Rows().front());
    EXPECT_TRUE(chooser.ok->isEnabled());

    // A heading click keeps the selected event selected.
    ASSERT_TRUE(chooser.dialog.SelectName("straße"));
    chooser.list->header()->setSortIndicator(1, Qt::DescendingOrder);
    EXPECT_EQ(chooser.Selected(), "straße");
}

TEST(EventChooser, OkGivesThePositionAmongTheEventsAndDisabledEventsAreGreyed)
{
    Chooser chooser;
    chooser.filter->setText("CLAIR");
    EXPECT_EQ(chooser.Rows(), (std::vector<std::string>{"eclair", "ÉCLAIR", "Éclair"}));
    QAbstractItemModel* model = chooser.list->model();
    EXPECT_TRUE(model->index(0, 0).data(Qt::ForegroundRole).isValid()); // eclair is disabled
    EXPECT_FALSE(model->index(1, 0).data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(model->index(2, 1).data(Qt::ToolTipRole).toString(), "Bakery");
    chooser.list->setCurrentIndex(model->index(2, 0));
    chooser.ok->click();
    EXPECT_EQ(chooser.dialog.result(), int(QDialog::Accepted));
    EXPECT_EQ(chooser.dialog.ChosenIndex(), 4); // the comment between events is not counted
    EXPECT_EQ(NthEvent(chooser.doc.Root(), 4)->ValueUtf8(L"name"), "Éclair");
}
