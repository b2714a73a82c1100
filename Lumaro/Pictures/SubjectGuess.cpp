// SPDX-License-Identifier: Apache-2.0
#include "Lumaro/Pictures/SubjectGuess.h"

#include <opencv2/imgproc.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>
#include <vector>

namespace lumaro {
namespace {

constexpr int edgeClusters = 8;
constexpr double fullSide = 0.55;   ///< of a side, that only background fills
constexpr double partOfSide = 0.01; ///< that counts as lying on it
constexpr int scans = 4;
constexpr float unreached = 1e6F;
/// Light changes where nothing does: shadows are told from things by their colour more than by their light.
constexpr float lightWeight = 0.7F;
/// In steps of the Lab space; nobody sees a thing that stands out less.
constexpr double leastContrast = 7;
/// Two places of the background that are this near are one; in the same steps.
constexpr double sameColour = 7;

enum Side : std::uint8_t { top, bottom, left, right };

struct EdgePixel {
    cv::Point place;
    Side side;
};

std::vector<EdgePixel> edgePixels(cv::Size size, int band) {
    std::vector<EdgePixel> pixels;
    for (int depth = 0; depth < band; ++depth) {
        for (int x = 0; x < size.width; ++x) {
            pixels.push_back({{x, depth}, top});
            pixels.push_back({{x, size.height - 1 - depth}, bottom});
        }
        for (int y = 0; y < size.height; ++y) {
            pixels.push_back({{depth, y}, left});
            pixels.push_back({{size.width - 1 - depth, y}, right});
        }
    }
    return pixels;
}

// Which clusters of the edge are background, by the shares of the four sides that each fills.
std::vector<bool> backgroundClusters(const std::vector<EdgePixel>& pixels, const cv::Mat& clusters, int count) {
    std::vector<std::array<double, 4>> shares(static_cast<std::size_t>(count));
    std::array<double, 4> whole{};
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const auto cluster = static_cast<std::size_t>(clusters.at<int>(static_cast<int>(i)));
        shares[cluster].at(pixels[i].side) += 1;
        whole.at(pixels[i].side) += 1;
    }
    std::vector<bool> isBackground;
    for (auto& share : shares) {
        int sides = 0;
        bool isFull = false;
        for (std::size_t side = 0; side < share.size(); ++side) {
            share.at(side) /= whole.at(side);
            sides += share.at(side) >= partOfSide ? 1 : 0;
            isFull = isFull || share.at(side) >= fullSide;
        }
        isBackground.push_back(isFull || sides >= 2);
    }
    return isBackground;
}

cv::Mat knownBackground(const cv::Mat& lab) {
    const int band = std::max(1, std::min(lab.rows, lab.cols) / 60);
    const auto pixels = edgePixels(lab.size(), band);
    const int count = std::min<int>(edgeClusters, static_cast<int>(pixels.size()));
    cv::Mat samples(static_cast<int>(pixels.size()), 3, CV_32F);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        const auto& colour = lab.at<cv::Vec3f>(pixels[i].place);
        for (int channel = 0; channel < 3; ++channel) samples.at<float>(static_cast<int>(i), channel) = colour[channel];
    }
    cv::Mat clusters;
    cv::theRNG().state = 1;
    cv::kmeans(samples, count, clusters, {cv::TermCriteria::COUNT + cv::TermCriteria::EPS, 20, 0.5}, 2,
               cv::KMEANS_PP_CENTERS);
    const auto isBackground = backgroundClusters(pixels, clusters, count);
    cv::Mat known = cv::Mat::zeros(lab.size(), CV_8UC1);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (isBackground[static_cast<std::size_t>(clusters.at<int>(static_cast<int>(i)))]) {
            known.at<uchar>(pixels[i].place) = 255;
        }
    }
    return known;
}

// Raster scans from two corners in turn: `come(from, to)` says that a way leads on from one pixel to its neighbour.
template <class Come>
void scan(cv::Size size, Come come) {
    for (int pass = 0; pass < scans; ++pass) {
        const int step = pass % 2 == 0 ? 1 : -1;
        const int firstRow = step > 0 ? 0 : size.height - 1;
        const int firstColumn = step > 0 ? 0 : size.width - 1;
        for (int y = firstRow; y >= 0 && y < size.height; y += step) {
            for (int x = firstColumn; x >= 0 && x < size.width; x += step) {
                if (y != firstRow) come(cv::Point{x, y - step}, cv::Point{x, y});
                if (x != firstColumn) come(cv::Point{x - step, y}, cv::Point{x, y});
            }
        }
    }
}

// By how much a channel must change on the smoothest way from the known pixels.
cv::Mat barrier(const cv::Mat& channel, const cv::Mat& known) {
    cv::Mat highest = channel.clone();
    cv::Mat lowest = channel.clone();
    cv::Mat distance{channel.size(), CV_32F, cv::Scalar{unreached}};
    distance.setTo(0, known);
    scan(channel.size(), [&](cv::Point from, cv::Point to) {
        if (distance.at<float>(from) >= unreached) return;
        const float value = channel.at<float>(to);
        const float high = std::max(highest.at<float>(from), value);
        const float low = std::min(lowest.at<float>(from), value);
        if (high - low >= distance.at<float>(to)) return;
        distance.at<float>(to) = high - low;
        highest.at<float>(to) = high;
        lowest.at<float>(to) = low;
    });
    return distance;
}

// How steep the steepest place is on the gentlest way from the known pixels.
cv::Mat steepest(const cv::Mat& slope, const cv::Mat& known) {
    cv::Mat distance{slope.size(), CV_32F, cv::Scalar{unreached}};
    distance.setTo(0, known);
    scan(slope.size(), [&](cv::Point from, cv::Point to) {
        const float steep = std::max(distance.at<float>(from), slope.at<float>(to));
        distance.at<float>(to) = std::min(distance.at<float>(to), steep);
    });
    return distance;
}

// How far each pixel stands out from the known background: soft shadows and gradients change without a steep place,
// grain has steep places without a change.
cv::Mat standingOut(const cv::Mat& lab, const cv::Mat& known) {
    std::vector<cv::Mat> channels;
    cv::split(lab, channels);
    cv::Mat change = cv::Mat::zeros(lab.size(), CV_32F);
    cv::Mat slope = cv::Mat::zeros(lab.size(), CV_32F);
    for (const auto& channel : channels) {
        change += barrier(channel, known);
        cv::Mat soft;
        cv::GaussianBlur(channel, soft, {}, 1);
        cv::Mat across;
        cv::Mat down;
        cv::Sobel(soft, across, CV_32F, 1, 0, 3, 0.25);
        cv::Sobel(soft, down, CV_32F, 0, 1, 3, 0.25);
        slope += across.mul(across) + down.mul(down);
    }
    cv::sqrt(slope, slope);
    cv::Mat both;
    cv::sqrt(change.mul(steepest(slope, known)), both);
    return both;
}

cv::Mat opened(const cv::Mat& mask) {
    const int reach = std::max(1, std::min(mask.rows, mask.cols) / 100);
    const auto disc = cv::getStructuringElement(cv::MORPH_ELLIPSE, {2 * reach + 1, 2 * reach + 1});
    cv::Mat wide;
    cv::morphologyEx(mask, wide, cv::MORPH_OPEN, disc);
    return wide;
}

// A table's far edge and the like: thin, and it runs out of the picture.
cv::Mat linesFromTheEdge(const cv::Mat& subject) {
    cv::Mat around;
    cv::dilate(opened(subject), around, cv::getStructuringElement(cv::MORPH_ELLIPSE, {5, 5}));
    cv::Mat lines = subject & ~around;
    cv::Mat pieces;
    const int count = cv::connectedComponents(lines, pieces, 8, CV_32S);
    std::vector<bool> isFromEdge(static_cast<std::size_t>(count));
    for (const auto& pixel : edgePixels(lines.size(), 1)) {
        isFromEdge[static_cast<std::size_t>(pieces.at<int>(pixel.place))] = true;
    }
    for (int piece = 1; piece < count; ++piece) {
        if (!isFromEdge[static_cast<std::size_t>(piece)]) lines.setTo(0, pieces == piece);
    }
    return lines;
}

// What is seen through a handle, or between a tail and its cat: it has the colour that the background has beside or
// above the subject. Not below, where a table has the colour of coffee.
cv::Mat shiningThrough(const cv::Mat& lab, const cv::Mat& subject) {
    cv::Mat apart;
    cv::dilate(subject, apart, cv::getStructuringElement(cv::MORPH_ELLIPSE, {7, 7}));
    cv::Mat like = cv::Mat::zeros(lab.size(), CV_8UC1);
    cv::Mat soft;
    cv::GaussianBlur(lab, soft, {}, 1.5);
    const auto along = [&](cv::Point start, cv::Point step) {
        std::optional<cv::Vec3f> behind;
        const cv::Rect whole{{0, 0}, lab.size()};
        for (cv::Point at = start; whole.contains(at); at += step) {
            const auto& colour = soft.at<cv::Vec3f>(at);
            if (apart.at<uchar>(at) == 0) {
                behind = colour;
            } else if (behind && cv::norm(colour, *behind) < sameColour) {
                like.at<uchar>(at) = 255;
            }
        }
    };
    for (int y = 0; y < lab.rows; ++y) {
        along({0, y}, {1, 0});
        along({lab.cols - 1, y}, {-1, 0});
    }
    for (int x = 0; x < lab.cols; ++x) along({x, 0}, {0, 1});
    return opened(opened(like & subject));
}

} // namespace

cv::Mat guessedSubject(const cv::Mat& colours) {
    cv::Mat lab;
    colours.convertTo(lab, CV_32F, 1.0 / 255);
    cv::cvtColor(lab, lab, cv::COLOR_RGB2Lab);
    cv::multiply(lab, cv::Scalar{lightWeight, 1, 1}, lab);
    cv::Mat labels{colours.size(), CV_8UC1, cv::Scalar{cv::GC_PR_BGD}};
    const cv::Mat known = knownBackground(lab);
    if (cv::countNonZero(known) == 0) return labels;
    const cv::Mat out = standingOut(lab, known);
    double most = 0;
    cv::minMaxLoc(out, nullptr, &most);
    if (most < leastContrast) return labels;
    // By its logarithm, so that one bright part does not make background of the rest.
    cv::Mat steps;
    cv::log(out + 1, steps);
    steps.convertTo(steps, CV_8U, 255 / std::log(most + 1));
    cv::Mat split;
    const double threshold = cv::threshold(steps, split, 0, 255, cv::THRESH_OTSU);
    const cv::Mat subject = steps > threshold;
    labels.setTo(cv::GC_PR_FGD, subject);
    labels.setTo(cv::GC_BGD, known | linesFromTheEdge(subject) | shiningThrough(lab, subject));
    return labels;
}

} // namespace lumaro
