#include "model/BufferedStream.h"

#include <algorithm>
#include <cstring>

namespace vexplot {

BufferedStream::BufferedStream(IStream* base, Direction direction, size_t capacity, uint64_t start)
    : base_(base), direction_(direction), buffer_(std::max<size_t>(capacity, 1)), basePosition_(start) {}

uint64_t BufferedStream::Position() const {
    return direction_ == Direction::Read ? basePosition_ - (end_ - begin_) : basePosition_ + end_;
}

HRESULT BufferedStream::Fault(HRESULT hr) {
    if (FAILED(hr) && SUCCEEDED(fault_)) fault_ = hr;
    return hr;
}

// -- reading --

HRESULT BufferedStream::Fill() {
    begin_ = end_ = 0;
    uint32_t got = 0;
    const HRESULT hr = base_->Read(buffer_.data(), static_cast<uint32_t>(buffer_.size()), &got);
    if (FAILED(hr)) return Fault(hr);
    end_ = got;
    basePosition_ += got;
    return S_OK;
}

HRESULT BufferedStream::ReadDirect(uint8_t* bytes, uint32_t size, uint32_t* read) {
    begin_ = end_ = 0;  // the buffer no longer holds the bytes before the base position
    uint32_t got = 0;
    const HRESULT hr = base_->Read(bytes, size, &got);
    if (FAILED(hr)) return Fault(hr);
    basePosition_ += got;
    *read = got;
    return S_OK;
}

HRESULT BufferedStream::Read(void* buffer, uint32_t size, uint32_t* read) {
    if (read) *read = 0;
    if (direction_ != Direction::Read) return STG_E_ACCESSDENIED;
    if (FAILED(fault_)) return fault_;
    if (!buffer && size > 0) return E_POINTER;
    auto* out = static_cast<uint8_t*>(buffer);
    uint32_t done = 0;
    while (done < size) {
        if (begin_ == end_) {
            const uint32_t wanted = size - done;
            if (wanted >= buffer_.size()) {
                // A block as large as the buffer gains nothing from copying.
                uint32_t got = 0;
                if (HRESULT hr = ReadDirect(out + done, wanted, &got); FAILED(hr)) return hr;
                done += got;
                break;
            }
            if (HRESULT hr = Fill(); FAILED(hr)) return hr;
            if (end_ == 0) break;  // the end of the base stream
        }
        const auto n = static_cast<uint32_t>(std::min<size_t>(size - done, end_ - begin_));
        std::memcpy(out + done, buffer_.data() + begin_, n);
        begin_ += n;
        done += n;
    }
    if (read) *read = done;
    return S_OK;
}

// -- writing --

HRESULT BufferedStream::WriteDirect(const uint8_t* bytes, uint32_t size) {
    uint32_t written = 0;
    const HRESULT hr = base_->Write(bytes, size, &written);
    basePosition_ += written;
    if (FAILED(hr)) return Fault(hr);
    if (written != size) return Fault(STG_E_MEDIUMFULL);
    return S_OK;
}

HRESULT BufferedStream::SendBuffer() {
    if (end_ == 0) return S_OK;
    const size_t pending = end_;
    // Dropped whether or not the base takes it: after a failure the fault
    // answers every later call, so nothing would write it again.
    end_ = 0;
    return WriteDirect(buffer_.data(), static_cast<uint32_t>(pending));
}

HRESULT BufferedStream::Write(const void* buffer, uint32_t size, uint32_t* written) {
    if (written) *written = 0;
    if (direction_ != Direction::Write) return STG_E_ACCESSDENIED;
    if (FAILED(fault_)) return fault_;
    if (!buffer && size > 0) return E_POINTER;
    const auto* in = static_cast<const uint8_t*>(buffer);
    if (end_ + size > buffer_.size()) {
        if (HRESULT hr = SendBuffer(); FAILED(hr)) return hr;
    }
    if (size >= buffer_.size()) {
        if (HRESULT hr = WriteDirect(in, size); FAILED(hr)) return hr;
    } else {
        std::memcpy(buffer_.data() + end_, in, size);
        end_ += size;
    }
    if (written) *written = size;
    return S_OK;
}

// -- position --

HRESULT BufferedStream::MoveBase(uint64_t position) {
    uint64_t now = 0;
    const HRESULT hr = base_->Seek(static_cast<int64_t>(position), STREAM_SEEK_SET, &now);
    if (FAILED(hr)) return Fault(hr);
    basePosition_ = now;
    return S_OK;
}

HRESULT BufferedStream::Flush() {
    if (FAILED(fault_)) return fault_;
    if (direction_ == Direction::Write) return SendBuffer();
    if (begin_ == end_ && end_ == 0) return S_OK;
    const uint64_t position = Position();
    begin_ = end_ = 0;
    return MoveBase(position);
}

HRESULT BufferedStream::Resync() {
    begin_ = end_ = 0;
    uint64_t now = 0;
    const HRESULT hr = base_->Seek(0, STREAM_SEEK_CUR, &now);
    if (FAILED(hr)) return Fault(hr);
    basePosition_ = now;
    return S_OK;
}

HRESULT BufferedStream::Seek(int64_t move, uint32_t origin, uint64_t* newPosition) {
    if (FAILED(fault_)) return fault_;
    int64_t base = 0;
    switch (origin) {
        case STREAM_SEEK_SET: break;
        case STREAM_SEEK_CUR: base = static_cast<int64_t>(Position()); break;
        case STREAM_SEEK_END: {
            uint64_t size = 0;
            if (HRESULT hr = Stat(&size); FAILED(hr)) return hr;
            base = static_cast<int64_t>(size);
            break;
        }
        default: return STG_E_INVALIDFUNCTION;
    }
    if ((move < 0 && base + move < 0) || (move > 0 && base > INT64_MAX - move)) return STG_E_INVALIDFUNCTION;
    const auto target = static_cast<uint64_t>(base + move);
    const uint64_t bufferStart = basePosition_ - end_;
    if (direction_ == Direction::Read && target >= bufferStart && target <= basePosition_) {
        begin_ = static_cast<size_t>(target - bufferStart);
    } else if (target != Position()) {
        if (direction_ == Direction::Write) {
            if (HRESULT hr = SendBuffer(); FAILED(hr)) return hr;
        }
        begin_ = end_ = 0;
        if (HRESULT hr = MoveBase(target); FAILED(hr)) return hr;
    }
    if (newPosition) *newPosition = Position();
    return S_OK;
}

HRESULT BufferedStream::SetSize(uint64_t size) {
    if (direction_ != Direction::Write) return STG_E_ACCESSDENIED;
    if (HRESULT hr = Flush(); FAILED(hr)) return hr;
    return Fault(base_->SetSize(size));
}

HRESULT BufferedStream::Commit(uint32_t flags) {
    if (direction_ != Direction::Write) return S_OK;
    if (HRESULT hr = Flush(); FAILED(hr)) return hr;
    return Fault(base_->Commit(flags));
}

HRESULT BufferedStream::Stat(uint64_t* size) {
    if (!size) return E_POINTER;
    if (FAILED(fault_)) return fault_;
    if (HRESULT hr = base_->Stat(size); FAILED(hr)) return Fault(hr);
    if (direction_ == Direction::Write) *size = std::max(*size, Position());
    return S_OK;
}

}  // namespace vexplot
