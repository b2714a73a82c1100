// SPDX-License-Identifier: Apache-2.0
#include "Tests/LumaroRoom/Server/TestClient.h"

#include <netinet/in.h>
#include <openssl/ssl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <utility>

namespace lumaro {
namespace {

constexpr timeval patience{.tv_sec = 20, .tv_usec = 0};

std::string lowered(std::string_view text) {
    std::string lower{text};
    std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower;
}

// Status line and headers of an answer, up to the empty line.
Reply parseHead(std::string_view head) {
    Reply reply;
    std::from_chars(head.data() + 9, head.data() + head.size(), reply.status);
    for (auto at = head.find("\r\n"); at < head.size();) {
        const auto end = std::min(head.find("\r\n", at + 2), head.size());
        const auto field = head.substr(at + 2, end - at - 2);
        const auto colon = field.find(": ");
        if (colon != std::string_view::npos) {
            reply.headers[lowered(field.substr(0, colon))] = field.substr(colon + 2);
        }
        at = end;
    }
    return reply;
}

} // namespace

struct Line::State {
    int handle = -1;
    std::unique_ptr<SSL_CTX, decltype(&SSL_CTX_free)> context{nullptr, SSL_CTX_free};
    std::unique_ptr<SSL, decltype(&SSL_free)> tls{nullptr, SSL_free};
};

Line::Line(std::uint16_t port, Layer layer) : state_(std::make_unique<State>()) {
    state_->handle = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    ::setsockopt(state_->handle, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    ::setsockopt(state_->handle, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(state_->handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return;
    if (layer == Layer::plain) return;
    state_->context.reset(SSL_CTX_new(TLS_client_method()));
    state_->tls.reset(SSL_new(state_->context.get()));
    SSL_set_fd(state_->tls.get(), state_->handle);
    SSL_connect(state_->tls.get());
}

Line::Line(Line&& other) noexcept = default;

Line::~Line() {
    if (state_) close();
}

void Line::close() {
    if (state_->handle >= 0) ::close(std::exchange(state_->handle, -1));
}

bool Line::write(std::string_view bytes) {
    while (!bytes.empty()) {
        const auto count = state_->tls ? SSL_write(state_->tls.get(), bytes.data(), static_cast<int>(bytes.size()))
                                       : ::send(state_->handle, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::string Line::read(std::size_t most) {
    std::string bytes(most, '\0');
    const auto count = state_->tls ? SSL_read(state_->tls.get(), bytes.data(), static_cast<int>(most))
                                   : ::recv(state_->handle, bytes.data(), most, 0);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return bytes;
}

std::string requestText(const Ask& ask) {
    std::string text = ask.method + " " + ask.target + " HTTP/1.1\r\nHost: room\r\n";
    if (!ask.token.empty()) text += "Authorization: Bearer " + ask.token + "\r\n";
    for (const auto& header : ask.headers) text += header.name + ": " + header.value + "\r\n";
    if (!ask.body.empty()) text += "Content-Length: " + std::to_string(ask.body.size()) + "\r\n";
    return text + "\r\n" + ask.body;
}

Reply readReply(Line& line) {
    std::string bytes;
    while (bytes.find("\r\n\r\n") == std::string::npos) {
        const auto more = line.read(1); // nothing behind the head is taken
        if (more.empty()) return {};
        bytes += more;
    }
    auto reply = parseHead(bytes);
    std::size_t size = 0;
    const auto& length = reply.headers["content-length"];
    std::from_chars(length.data(), length.data() + length.size(), size);
    while (reply.body.size() < size) {
        const auto more = line.read(size - reply.body.size());
        if (more.empty()) break;
        reply.body += more;
    }
    return reply;
}

Reply ask(std::uint16_t port, const Ask& ask, Layer layer) {
    Line line{port, layer};
    line.write(requestText(ask)); // a server may refuse before it has read all
    return readReply(line);
}

DeviceSocket::DeviceSocket(std::uint16_t port, const std::string& coupleId, const std::string& token,
                           std::vector<HttpHeader> headers, Layer layer)
    : line_(port, layer) {
    headers.insert(headers.end(), {{"Connection", "Upgrade"},
                                   {"Upgrade", "websocket"},
                                   {"Sec-WebSocket-Version", "13"},
                                   {"Sec-WebSocket-Key", "bHVtYXJvIGx1bWFybyE="}});
    line_.write(requestText({"GET", "/couples/" + coupleId + "/ws", token, "", std::move(headers)}));
    opening_ = readReply(line_);
}

bool DeviceSocket::send(std::string_view payload, std::uint8_t opcode) {
    std::string frame{static_cast<char>(0x80 | opcode)};
    const auto appendSize = [&](int bytes) {
        for (int shift = 8 * (bytes - 1); shift >= 0; shift -= 8) {
            frame.push_back(static_cast<char>(payload.size() >> static_cast<unsigned>(shift)));
        }
    };
    const std::size_t size = payload.size();
    frame.push_back(static_cast<char>(0x80 | (size < 126 ? size : size < 65536 ? 126 : 127)));
    if (size >= 126) appendSize(size < 65536 ? 2 : 8);
    frame.append(4, '\0'); // a mask of zeros changes nothing
    frame.append(payload);
    return line_.write(frame);
}

std::optional<std::string> DeviceSocket::exactly(std::size_t count) {
    while (unread_.size() < count) {
        const auto more = line_.read(65536);
        if (more.empty()) return std::nullopt;
        unread_ += more;
    }
    auto bytes = unread_.substr(0, count);
    unread_.erase(0, count);
    return bytes;
}

std::optional<std::string> DeviceSocket::receive() {
    for (;;) {
        const auto head = exactly(2);
        if (!head) return std::nullopt;
        std::size_t size = static_cast<unsigned char>((*head)[1]);
        if (size >= 126) {
            const auto longer = exactly(size == 126 ? 2 : 8);
            if (!longer) return std::nullopt;
            size = 0;
            for (const char c : *longer) size = size << 8U | static_cast<unsigned char>(c);
        }
        auto payload = exactly(size);
        if (!payload) return std::nullopt;
        const auto opcode = static_cast<std::uint8_t>((*head)[0]) & 0x0fU;
        if (opcode == text) return payload;
        if (opcode != goodbye) continue;
        if (size >= 2) {
            closeCode_ = static_cast<unsigned char>((*payload)[0]) << 8 | static_cast<unsigned char>((*payload)[1]);
        }
        send(*payload, goodbye);
        return std::nullopt;
    }
}

std::optional<std::string> DeviceSocket::receiveWith(std::string_view part) {
    for (auto frame = receive(); frame; frame = receive()) {
        if (frame->find(part) != std::string::npos) return frame;
    }
    return std::nullopt;
}

int DeviceSocket::closeCode() {
    while (receive()) {
    }
    line_.close();
    return closeCode_;
}

} // namespace lumaro
