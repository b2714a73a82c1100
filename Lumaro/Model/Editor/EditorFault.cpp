// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Model/Editor/EditorFault.h"

#include "LumaroCore/Support/Overloaded.h"

#include <utility>

namespace lumaro {
namespace {

std::string_view wordsFor(EditFault fault) {
    switch (fault) {
    case EditFault::noSuchItem: return "it isn't up any more";
    case EditFault::wrongKind: return "that doesn't go with this one";
    case EditFault::cannotResize: return "this one keeps its size";
    case EditFault::notFinite: return "that's nowhere on the window";
    case EditFault::locked: return "it's locked — unlock it first";
    }
    std::unreachable();
}

std::string_view wordsFor(DoodleFault fault) {
    switch (fault) {
    case DoodleFault::empty: return "there's no ink in it yet";
    case DoodleFault::tooManyStrokes: return "one doodle holds no more strokes — rub some out, or start another";
    case DoodleFault::tooLarge: return "that's bigger than the window — draw a little smaller";
    case DoodleFault::tooMuchInk: return "that's a lot of ink for one doodle — rub some out, or start another";
    }
    std::unreachable();
}

std::string_view wordsFor(UndoFault fault) {
    switch (fault) {
    case UndoFault::nothingToUndo: return "there's nothing to take back";
    case UndoFault::nothingToRedo: return "there's nothing to do again";
    case UndoFault::changedSince: return "it has changed since — it stays as it is";
    case UndoFault::expired: return "that note's day is over";
    }
    std::unreachable();
}

} // namespace

std::string_view textOf(const EditorFault& fault) {
    return std::visit(
        Overloaded{[](ActFault act) { return textOf(act); }, [](EditFault edit) { return wordsFor(edit); },
                   [](DoodleFault doodle) { return wordsFor(doodle); }, [](UndoFault undo) { return wordsFor(undo); }},
        fault);
}

} // namespace lumaro
