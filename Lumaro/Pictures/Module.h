// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

namespace lumaro {

/// The function of that name in one of the modules, libraries with large dependencies that few starts of the program
/// need: loaded when it is first asked for, from where it is installed or was built, and kept. None, and a line among
/// the warnings, where it is missing. On any thread. Whoever changes what a function takes or gives changes the number
/// in its name: a program that runs while it is upgraded then finds none of its own, and not another one's.
QFunctionPointer functionOfModule(const char* module, const char* function);

} // namespace lumaro
