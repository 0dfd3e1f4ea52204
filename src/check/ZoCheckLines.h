#pragma once
#include "check/ZoCheckFinding.h"

#include <cstddef>
#include <functional>
#include <vector>

// The lines of the elements that findings are about, found in a document's text after the
// check, so that the tree never carries line numbers: one pass of the scanner over the
// file, looking up only the paths of the findings that have no line yet. Findings of other
// files, and paths the text does not hold (the file changed since it was read), keep line 0.
//
// consumed, when given, is told now and then how far the text has been read: the bytes
// before that offset are never looked at again (the caller may hand their memory back).
void ZoFindLines(std::vector<ZoFinding>& findings, zo::project::ProjectDoc file, char const* data,
                 std::size_t size, std::function<void(std::size_t offset)> const& consumed = {});

// The line of every child of the root (`events`...) and of each of their children (each
// event, each group...), by position: what nearly every finding is about, found in one pass
// that needs no findings, so that it can run while the check does.
struct ZoChildLines {
    std::vector<int> children;                // of the root's children
    std::vector<std::vector<int>> grandchildren; // of their children, by the child's position
};
ZoChildLines ZoFindChildLines(char const* data, std::size_t size,
                              std::function<void(std::size_t offset)> const& consumed = {});
// Gives each finding of file whose element lies one or two levels below the root its line
// from lines.
void ZoApplyChildLines(std::vector<ZoFinding>& findings, zo::project::ProjectDoc file, ZoChildLines const& lines);
