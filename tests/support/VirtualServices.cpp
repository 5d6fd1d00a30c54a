#include "support/VirtualServices.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace larkspool {

void VirtualTimer::SetMode(Mode wanted) {
    mode = wanted;
    run.reset();
    if (mode != Mode::Off) {
        run = std::make_shared<int>(0);
        Arm();
    }
}

void VirtualTimer::Arm() {
    queue.After(period, [this, token = std::weak_ptr<int>(run)] {
        if (token.expired()) {
            return;
        }
        if (mode == Mode::Multiple) {
            Arm();
        } else {
            mode = Mode::Off;
        }
        if (action) {
            action();
        }
    });
}

Datagram VirtualUDPSocket::Read() {
    if (waiting.empty()) {
        return {};
    }
    Datagram datagram{"127.0.0.1", 50000, std::move(waiting.front())};
    waiting.pop_front();
    return datagram;
}

void VirtualUDPSocket::Deliver(std::string data) {
    if (!bound) {
        return;
    }
    waiting.push_back(std::move(data));
    queue.After(0, [this, token = std::weak_ptr<int>(life)] {
        if (!token.expired() && dataAvailable) {
            dataAvailable();
        }
    });
}

VirtualHTTPSocket::VirtualHTTPSocket(std::shared_ptr<std::vector<VirtualHTTPSocket*>> open)
    : all(std::move(open)) {
    all->push_back(this);
}

VirtualHTTPSocket::~VirtualHTTPSocket() { std::erase(*all, this); }

void VirtualHTTPSocket::Deliver(const std::string& content, int status) const {
    // Both live on while they are in use, whatever the handler does with the socket.
    const auto handler = pageReceived;
    handler(std::string(url), status, content);
}

void VirtualHTTPSocket::Fail(int code) const {
    const auto handler = error;
    handler(code);
}

void RecordingSoundLibrary::Note(const char* function, const std::string& arguments) {
    if (!missing.empty() && missing.count(function) > 0) {
        throw FunctionNotFound(function, "libtonebridge.so");
    }
    if (keepsSound && !heard) {
        calls.push_back(arguments.empty() ? function : function + (" " + arguments));
    }
}

std::int64_t RecordingSoundLibrary::BuildSoundDeviceList() {
    Note("BuildSoundDeviceList");
    return static_cast<std::int64_t>(devices.size());
}

void RecordingSoundLibrary::GetSoundDeviceInfo(std::int64_t index, void* info, char* name) {
    Note("GetSoundDeviceInfo", Str(index));
    const Device& device = devices[static_cast<std::size_t>(index)];
    const auto id = static_cast<std::uint32_t>(index + 100);
    const std::array<std::uint32_t, 6> record = {id,      device.inputs, device.outputs,
                                                 id + 10, id + 20,       0};
    std::memcpy(info, record.data(), sizeof record);
    std::memcpy(name, device.name.c_str(), device.name.size() + 1);
}

void RecordingSoundLibrary::StartSoundOutput(std::int64_t outputDevice, double volume) {
    Note("StartSoundOutput", Str(outputDevice) + " " + Str(volume));
}

void RecordingSoundLibrary::StopSoundOutput() { Note("StopSoundOutput"); }

void RecordingSoundLibrary::SetSoundOutputVolume(double volume) {
    Note("setSoundOutputVolume", Str(volume));
}

void RecordingSoundLibrary::OutputSoundBlock(std::int64_t count, const void* samples,
                                             std::int64_t rate) {
    Note("OutputSoundBlock", Str(count) + " " + Str(rate));
    const auto* first = static_cast<const std::int16_t*>(samples);
    if (heard) {
        // A new stream is announced by a negative count, and opens with silence of the program's
        // own.
        if (count > 0 && !isPriming) {
            heard({first, static_cast<std::size_t>(count)});
        }
        isPriming = count < 0;
    } else if (count > 0 && keepsSound) {
        played.insert(played.end(), first, first + count);
    }
}

void RecordingSoundLibrary::SendUdpCommand(const void* data, std::int64_t length,
                                           std::int64_t port) {
    Note("SendUdpCommand", Str(length) + " " + Str(port));
    const std::string_view bytes(static_cast<const char*>(data), static_cast<std::size_t>(length));
    if (sent) {
        sent(port, bytes);
    } else {
        datagrams.emplace_back(port, bytes);
    }
}

} // namespace larkspool
