#pragma once
#include "check/ZoCheckFinding.h"
#include "uses/ZoUseTarget.h"

#include <vector>

// Every place of the project that uses the target, in the documents' order: each one a
// finding of severity note and rule "use" (so that the Problems window's rows, the
// program's lines and the event editor's opening at a field serve it as they serve the
// check), whose message is the field's text and, in a formula, whose column is that of the
// reference's "[". A field that names the target twice gives two places.
//
// Formulas are read with the formula language's lexer: "[PUMP1.RUN]" is not a use of
// "[PUMP1.RUNNING]", "[DEV.CODE/day]" is one of "[DEV.CODE]", and a text between quotes
// never is. Fields whose stored text does not hold the name at all are passed over
// without being read as formulas.
std::vector<ZoFinding> ZoFindUses(ZoUseDocs const& docs, ZoUseTarget const& target);
