#include "editor/ZoArgumentsListModel.h"

#include "editor/ZoAnnotationData.h"
#include "platform/tools/ZoTexts.h"

ZoArgumentsListModel::ZoArgumentsListModel(QObject* parent)
    : ZoNumberedListModel(ZoText(32433), parent)
{
}

void ZoArgumentsListModel::Fill(XmlNode const* event)
{
    std::vector<Row> rows;
    if (event) {
        int position = 0;
        std::vector<XmlNode*> const arguments = ZoArgumentsOf(*event);
        rows.reserve(arguments.size());
        for (XmlNode* argument : arguments) {
            std::string_view const value = argument->ValueUtf8(L"value");
            rows.push_back({position++, argument, QString::fromUtf8(value.data(), qsizetype(value.size()))});
        }
    }
    SetRows(std::move(rows));
}
