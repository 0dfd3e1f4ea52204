#pragma once
// The table's texts in the language of the run, so that a test compares what the user sees
// with what the table says for that id rather than with an English sentence.
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

#include <QString>

// The text of `id` with its placeholders filled by `args` as ZoFormat fills them (wchar_t
// const* for %s, int for %d).
template <class... Args>
QString Said(unsigned id, Args... args)
{
    return QString::fromStdWString(ZoFormat(ZoLoadString(id).c_str(), args...));
}
