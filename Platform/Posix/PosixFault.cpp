// SPDX-License-Identifier: Apache-2.0
#include "Platform/Posix/PosixFault.h"

#include <cerrno>
#include <system_error>

namespace lumaro {
namespace {

FileFault faultOf(int code) {
    switch (code) {
    case ENOENT:
    case ENOTDIR: return FileFault::notFound;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return FileFault::noSpace;
    case EACCES:
    case EPERM:
    case EROFS: return FileFault::denied;
    case EINTR: return FileFault::interrupted;
    case EIO: return FileFault::inOut;
    default: return FileFault::other;
    }
}

} // namespace

FileError posixError(const std::string& path, int code) {
    return {faultOf(code), path, std::generic_category().message(code)};
}

} // namespace lumaro
