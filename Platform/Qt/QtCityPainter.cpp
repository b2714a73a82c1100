// SPDX-License-Identifier: Apache-2.0
#include "Platform/Qt/QtCityPainter.h"

#include "LumaroCore/Support/OneLine.h"
#include "LumaroCore/Support/Wire.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include <utility>

namespace lumaro {
namespace {

constexpr qint64 maxComplaint = 300;

class CityProcess final : public CityPainter::Run {
public:
    CityProcess(QObject& owner, const std::string& program, const QByteArray& line, std::chrono::milliseconds patience,
                std::move_only_function<void(CityPainter::Answer)> then)
        : process_(new QProcess{&owner}), then_(std::move(then)) {
        timer_.setSingleShot(true);
        QObject::connect(&timer_, &QTimer::timeout, &context_, [this] { fail("no picture in time"); });
        timer_.start(patience);
        if (program.empty()) {
            // Queued, as `then` is never called from within.
            QMetaObject::invokeMethod(
                &context_, [this] { fail("the program is not installed"); }, Qt::QueuedConnection);
            return;
        }
        QObject::connect(process_, &QProcess::readyReadStandardOutput, &context_, [this] { read(); });
        QObject::connect(process_, &QProcess::readyReadStandardError, &context_, [this] { hear(); });
        QObject::connect(process_, &QProcess::finished, &context_,
                         [this](int status, QProcess::ExitStatus how) { finished(status, how); });
        // Queued, as one that cannot be started says so at once.
        QObject::connect(
            process_, &QProcess::errorOccurred, &context_,
            [this](QProcess::ProcessError error) {
                if (error == QProcess::FailedToStart) fail("the program cannot be started");
            },
            Qt::QueuedConnection);
        process_->start(QString::fromStdString(program), {});
        process_->write(line);
        process_->closeWriteChannel();
    }
    CityProcess(const CityProcess&) = delete;
    CityProcess& operator=(const CityProcess&) = delete;
    ~CityProcess() override { drop(); }

private:
    // The destructor of a process would wait for its end.
    void drop() {
        if (process_ == nullptr) return;
        auto* const process = std::exchange(process_, nullptr);
        process->disconnect(&context_);
        if (process->state() == QProcess::NotRunning) return process->deleteLater();
        QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
        process->kill();
    }

    void read() {
        picture_ += process_->readAllStandardOutput();
        if (std::cmp_greater(picture_.size(), CityPainter::maxPictureBytes)) fail("the picture is too large");
    }

    void hear() {
        const auto more = process_->readAllStandardError();
        complaint_ += more.left(maxComplaint - complaint_.size());
    }

    void finished(int status, QProcess::ExitStatus how) {
        read();
        if (process_ == nullptr) return;
        hear();
        if (how == QProcess::NormalExit && status == 0) return answer(picture_.toStdString());
        const auto end =
            how == QProcess::NormalExit ? "exit status " + std::to_string(status) : std::string{"it crashed"};
        const auto said = onOneLine(complaint_.trimmed().toStdString());
        fail(said.empty() ? end : end + ", " + said);
    }

    void fail(std::string message) { answer(std::unexpected(CityFailure{std::move(message)})); }

    void answer(CityPainter::Answer answer) {
        drop();
        timer_.stop();
        // From a local: it may drop this run.
        auto then = std::move(then_);
        then(std::move(answer));
    }

    QProcess* process_; ///< null once it is of no interest
    std::move_only_function<void(CityPainter::Answer)> then_;
    QByteArray picture_;
    QByteArray complaint_;
    QTimer timer_;
    QObject context_;
};

} // namespace

std::vector<std::string> QtCityPainter::usualFolders() {
    const auto here = QCoreApplication::applicationDirPath().toStdString();
    return {here, here + "/../libexec/lumaro"};
}

std::string QtCityPainter::program() const {
    for (const auto& folder : folders_) {
        const QFileInfo file{QString::fromStdString(folder + "/lumaro-cityview")};
        if (file.isFile() && file.isExecutable()) return file.filePath().toStdString();
    }
    return {};
}

std::unique_ptr<CityPainter::Run> QtCityPainter::paint(CityRequest request,
                                                       std::move_only_function<void(Answer)> then) {
    // A request that has no text is refused as an empty one.
    const auto text = Wire::encode(request).value_or("");
    return std::make_unique<CityProcess>(processes_, program(), QByteArray::fromStdString(text + "\n"), patience_,
                                         std::move(then));
}

} // namespace lumaro
