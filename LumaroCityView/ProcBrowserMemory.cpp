// SPDX-License-Identifier: Apache-2.0
#include "LumaroCityView/BrowserMemory.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <map>

#include <unistd.h>

namespace lumaro {
namespace {

QByteArray contents(int process, const char* file) {
    QFile at{QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1String{file})};
    return at.open(QIODevice::ReadOnly) ? at.readAll() : QByteArray{};
}

// proc(5): "pid (name) state ppid ...", and the name may hold anything.
int parentOf(int process) {
    const auto stat = contents(process, "stat");
    return stat.sliced(stat.lastIndexOf(')') + 1).simplified().split(' ').value(1).toInt();
}

// "RssAnon:      1234 kB"
std::int64_t ownMemory(int process) {
    constexpr std::int64_t kibibyte = 1024;
    std::int64_t bytes = 0;
    for (const auto& line : contents(process, "status").split('\n')) {
        if (!line.startsWith("RssAnon:") && !line.startsWith("RssShmem:")) continue;
        bytes += line.simplified().split(' ').value(1).toLongLong() * kibibyte;
    }
    return bytes;
}

} // namespace

std::optional<std::int64_t> browserMemory() {
    std::map<int, int> parents;
    for (const auto& name : QDir{QStringLiteral("/proc")}.entryList(QDir::Dirs)) {
        if (const int process = name.toInt(); process > 0) parents[process] = parentOf(process);
    }
    const int self = ::getpid();
    if (!parents.contains(self)) return std::nullopt;
    std::int64_t sum = 0;
    for (const auto& [process, parent] : parents) {
        auto above = process;
        while (above != self && above > 0) above = parents.contains(above) ? parents.at(above) : 0;
        if (above == self) sum += ownMemory(process);
    }
    return sum;
}

} // namespace lumaro
