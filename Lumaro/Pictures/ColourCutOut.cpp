// SPDX-License-Identifier: Apache-2.0
// The module that cuts out, by colours.
#include "Lumaro/Pictures/CutOutWork.h"
#include "Lumaro/Pictures/SubjectGuess.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <cmath>
#include <deque>
#include <utility>
#include <vector>

namespace lumaro {
namespace {

constexpr int firstRounds = 3;
constexpr int laterRounds = 1;
// Fewer pixels are too few to learn a model of colours from.
constexpr int fewestSamples = 32;
// Parts and holes that are smaller than this share of what is kept are errors of the method.
constexpr double smallestPart = 0.04;
constexpr double smallestHole = 0.01;
// Nobody has pointed at anything yet: one thing is guessed, and whole but for where the background is seen through it.
constexpr double smallestGuessedPart = 0.25;
constexpr double smallestGuessedHole = 1e9;
// In pixels of the working picture.
constexpr double edgeSoftness = 1.6;
constexpr double outlineSlack = 0.7;
constexpr int trimMargin = 2;

cv::Mat matOf(const QImage& picture, QImage::Format format, int type) {
    const QImage pixels = picture.convertToFormat(format);
    return cv::Mat{pixels.height(), pixels.width(), type, const_cast<uchar*>(pixels.constBits()),
                   static_cast<std::size_t>(pixels.bytesPerLine())}
        .clone();
}

QImage imageOf(const cv::Mat& mask) {
    return QImage{mask.data, mask.cols, mask.rows, static_cast<qsizetype>(mask.step), QImage::Format_Grayscale8}.copy();
}

bool isTransparentSomewhere(const QImage& picture) {
    if (!picture.hasAlphaChannel()) return false;
    double least = 255;
    cv::minMaxLoc(matOf(picture, QImage::Format_Alpha8, CV_8UC1), &least);
    return least < 128;
}

QImage fitted(const QImage& picture, int side) {
    if (std::max(picture.width(), picture.height()) <= side) return picture;
    return picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

// Sets the pieces of `mask` that are smaller than a share of `ofArea` to 0, unless one of `wanted` lies in them.
void dropSmall(cv::Mat& mask, double smallestArea, const cv::Mat& wanted) {
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centres;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centres, 8, CV_32S);
    for (int label = 1; label < count; ++label) {
        if (stats.at<int>(label, cv::CC_STAT_AREA) >= smallestArea) continue;
        const cv::Mat piece = labels == label;
        if (cv::countNonZero(piece & wanted) == 0) mask.setTo(0, piece);
    }
}

int largestPiece(const cv::Mat& mask) {
    cv::Mat labels;
    cv::Mat stats;
    cv::Mat centres;
    const int count = cv::connectedComponentsWithStats(mask, labels, stats, centres, 8, CV_32S);
    int largest = 0;
    for (int label = 1; label < count; ++label) largest = std::max(largest, stats.at<int>(label, cv::CC_STAT_AREA));
    return largest;
}

// From a blurred edge to one that is as soft as a pair of scissors leaves it. It lies a little inside of the old one,
// where nothing of the background shines in.
cv::Mat sharpened(const cv::Mat& soft, double steepness) {
    constexpr double edge = 140;
    cv::Mat sharp;
    soft.convertTo(sharp, CV_8UC1, steepness, 127.5 - edge * steepness);
    return sharp;
}

struct Work {
    explicit Work(QImage whole) : picture(std::move(whole)), isCutAlready(isTransparentSomewhere(picture)) {
        const QImage small = fitted(picture, CutOut::workingSide);
        scale = picture.width() > 0 ? double(small.width()) / picture.width() : 1;
        if (isCutAlready) {
            now.soft = matOf(small, QImage::Format_Alpha8, CV_8UC1);
            return;
        }
        // The grain of a photo is none of its shapes.
        cv::bilateralFilter(matOf(small, QImage::Format_RGB888, CV_8UC3), colours, 5, 30, 3);
        now.scribbles = cv::Mat{colours.size(), CV_8UC1, cv::Scalar{unsaid}};
        now.labels = cv::Mat{colours.size(), CV_8UC1, cv::Scalar{cv::GC_PR_BGD}};
        cv::rectangle(now.labels, {{0, 0}, now.labels.size()}, cv::Scalar{cv::GC_BGD}, 2);
        now.soft = cv::Mat::zeros(colours.size(), CV_8UC1);
    }

    cv::Rect inWork(const QRectF& place) const {
        const QRectF scaled{place.topLeft() * scale, place.size() * scale};
        const QRect whole = scaled.normalized().toAlignedRect();
        return cv::Rect{whole.x(), whole.y(), whole.width(), whole.height()} & cv::Rect{{0, 0}, colours.size()};
    }

    /// What gestures change.
    struct State {
        cv::Mat scribbles;  ///< what people said of each pixel, if anything
        cv::Mat labels;     ///< what each pixel is taken for
        cv::Mat background; ///< the model of its colours; empty until something was cut
        cv::Mat foreground;
        cv::Mat soft;           ///< the mask
        bool isGuessed = false; ///< what is cut was guessed at first
    };

    void remember();
    cv::Mat drawn(std::span<const QPointF> points, double width) const;
    void guessAround(const cv::Mat& stroke);
    void cut();
    void smoothen();

    static constexpr uchar unsaid = 255;

    QImage picture;
    bool isCutAlready;
    double scale = 1; ///< of the working picture
    cv::Mat colours;
    State now;
    std::deque<State> before;
};

void Work::remember() {
    before.push_back({.scribbles = now.scribbles.clone(),
                      .labels = now.labels.clone(),
                      .background = now.background.clone(),
                      .foreground = now.foreground.clone(),
                      .soft = now.soft.clone(),
                      .isGuessed = now.isGuessed});
    if (before.size() > CutOut::mostUndoable) before.pop_front();
}

cv::Mat Work::drawn(std::span<const QPointF> points, double width) const {
    std::vector<cv::Point> line;
    for (const auto& point : points) {
        line.emplace_back(static_cast<int>(std::lround(point.x() * scale)),
                          static_cast<int>(std::lround(point.y() * scale)));
    }
    if (line.size() == 1) line.push_back(line.front());
    cv::Mat stroke = cv::Mat::zeros(colours.size(), CV_8UC1);
    cv::polylines(stroke, line, false, cv::Scalar{255}, std::max(1, static_cast<int>(std::lround(width * scale))));
    return stroke;
}

// What is wanted fills the neighbourhood of what is scribbled; the cut will tell.
void Work::guessAround(const cv::Mat& stroke) {
    const cv::Rect box = cv::boundingRect(stroke);
    const int reach = std::max(box.width, box.height) / 3 + 8;
    cv::Mat away;
    cv::distanceTransform(~stroke, away, cv::DIST_L2, cv::DIST_MASK_3);
    now.labels.setTo(cv::GC_PR_FGD, (away < reach) & (now.labels == cv::GC_PR_BGD));
}

void Work::cut() {
    now.labels.setTo(cv::GC_FGD, now.scribbles == cv::GC_FGD);
    now.labels.setTo(cv::GC_BGD, now.scribbles == cv::GC_BGD);
    const int kept = cv::countNonZero(now.labels & 1);
    const int dropped = static_cast<int>(now.labels.total()) - kept;
    if (kept >= fewestSamples && dropped >= fewestSamples) {
        cv::theRNG().state = 1;
        const bool isFirst = now.background.empty();
        cv::grabCut(colours, now.labels, {}, now.background, now.foreground, isFirst ? firstRounds : laterRounds,
                    isFirst ? cv::GC_INIT_WITH_MASK : cv::GC_EVAL);
    }
    smoothen();
}

void Work::smoothen() {
    cv::Mat mask = (now.labels & 1) * 255;
    const int largest = largestPiece(mask);
    dropSmall(mask, (now.isGuessed ? smallestGuessedPart : smallestPart) * largest, now.scribbles == cv::GC_FGD);
    cv::Mat holes = ~mask;
    dropSmall(holes, (now.isGuessed ? smallestGuessedHole : smallestHole) * largest,
              now.isGuessed ? now.labels == cv::GC_BGD : now.scribbles == cv::GC_BGD);
    mask = ~holes;
    cv::Mat blurred;
    cv::medianBlur(mask, mask, 5);
    cv::GaussianBlur(mask, blurred, {}, edgeSoftness);
    now.soft = sharpened(blurred, 1.6);
}

class ColourCutOut final : public CutOutWork {
public:
    explicit ColourCutOut(const QImage& picture) : work_(picture) {}

    [[nodiscard]] bool isCutAlready() const override { return work_.isCutAlready; }
    void guess() override;
    void setFrame(const QRectF& frame) override;
    void scribble(std::span<const QPointF> points, double width, CutOut::Scribble what) override;
    void undo() override;
    [[nodiscard]] int undoable() const override { return static_cast<int>(work_.before.size()); }
    [[nodiscard]] QImage mask() const override { return imageOf(work_.now.soft); }
    [[nodiscard]] QPainterPath outline() const override;
    [[nodiscard]] QImage sticker() const override;

private:
    Work work_;
};

void ColourCutOut::guess() {
    if (work_.isCutAlready) return;
    work_.now.labels = guessedSubject(work_.colours);
    work_.now.background.release();
    work_.now.isGuessed = true;
    work_.cut();
}

void ColourCutOut::setFrame(const QRectF& frame) {
    if (work_.isCutAlready) return;
    work_.remember();
    work_.now.isGuessed = false;
    work_.now.labels.setTo(cv::GC_BGD);
    work_.now.labels(work_.inWork(frame)).setTo(cv::GC_PR_FGD);
    work_.now.background.release();
    work_.cut();
}

void ColourCutOut::scribble(std::span<const QPointF> points, double width, CutOut::Scribble what) {
    if (work_.isCutAlready || points.empty()) return;
    work_.remember();
    const cv::Mat stroke = work_.drawn(points, width);
    work_.now.scribbles.setTo(what == CutOut::Scribble::keep ? cv::GC_FGD : cv::GC_BGD, stroke);
    if (what == CutOut::Scribble::keep) work_.guessAround(stroke);
    work_.cut();
}

void ColourCutOut::undo() {
    if (work_.before.empty()) return;
    work_.now = std::move(work_.before.back());
    work_.before.pop_back();
}

QPainterPath ColourCutOut::outline() const {
    std::vector<std::vector<cv::Point>> edges;
    cv::findContours(work_.now.soft >= 128, edges, cv::RETR_CCOMP, cv::CHAIN_APPROX_NONE);
    QPainterPath path;
    for (const auto& edge : edges) {
        std::vector<cv::Point> corners;
        cv::approxPolyDP(edge, corners, outlineSlack, true);
        if (corners.size() < 3) continue;
        const auto at = [&](std::size_t i) {
            const auto& corner = corners.at(i % corners.size());
            return QPointF{corner.x + 0.5, corner.y + 0.5} / work_.scale;
        };
        // Through the middle of each side, bent towards the corners.
        path.moveTo((at(0) + at(1)) / 2);
        for (std::size_t i = 1; i <= corners.size(); ++i) path.quadTo(at(i), (at(i) + at(i + 1)) / 2);
        path.closeSubpath();
    }
    return path;
}

QImage ColourCutOut::sticker() const {
    cv::Rect kept = cv::boundingRect(work_.now.soft >= 8);
    if (kept.empty()) return {};
    kept =
        cv::Rect{kept.x - trimMargin, kept.y - trimMargin, kept.width + 2 * trimMargin, kept.height + 2 * trimMargin} &
        cv::Rect{{0, 0}, work_.now.soft.size()};
    const double scale = work_.scale;
    const QRect place =
        QRectF{kept.x / scale, kept.y / scale, kept.width / scale, kept.height / scale}.toRect() & work_.picture.rect();
    const QImage piece = fitted(work_.picture.copy(place), CutOut::stickerSide);
    if (work_.isCutAlready) return piece.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    cv::Mat alpha;
    cv::resize(work_.now.soft(kept), alpha, {piece.width(), piece.height()}, 0, 0, cv::INTER_CUBIC);
    const double growth = piece.width() / double(kept.width);
    QImage cut = piece.convertToFormat(QImage::Format_ARGB32);
    const cv::Mat edge = sharpened(alpha, std::max(1.0, growth));
    cut.setAlphaChannel(imageOf(edge));
    return cut.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace
} // namespace lumaro

// By the name in `lumaro::makeCutOutWorkName`.
extern "C" Q_DECL_EXPORT lumaro::CutOutWork* lumaro_make_cut_out_work_1(const QImage& picture) {
    return std::make_unique<lumaro::ColourCutOut>(picture).release();
}
