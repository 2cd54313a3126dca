#include "codec/msgpack_reader.h"

#include <bit>
#include <string>
#include <string_view>
#include <vector>

#include "binding/tree_builder.h"
#include "diagnostics/format_message.h"

namespace wex {

namespace {

// One pass over the bytes with an explicit stack of open containers; the
// tree builder holds their values until they are complete.
class MessagePackReader {
  public:
    MessagePackReader(const std::uint8_t* data, std::size_t length, BindingProperty& root)
        : data_(data), length_(length), root_(root), builder_(root) {}

    std::size_t Run() {
        while (!failed_ && position_ < length_) {
            if (InKeyPosition()) {
                ReadKey();
            } else {
                ReadValue();
            }
            if (failed_ || CloseFinished()) {
                break;
            }
        }
        if (!failed_) {
            // Input that ends early leaves the open containers with what they hold.
            builder_.CloseAll();
        }
        return position_;
    }

  private:
    struct OpenContainer {
        std::uint64_t remaining;  // items still to come; keys and values both count in a map
        bool isMap;
    };

    bool InKeyPosition() const { return !open_.empty() && open_.back().isMap && open_.back().remaining % 2 == 0; }

    // Counts the item about to be read against the innermost container.
    void CountItem() {
        if (!open_.empty()) {
            --open_.back().remaining;
        }
    }

    // Pops every container whose items have all been read; true when the
    // root's value is complete.
    bool CloseFinished() {
        while (!open_.empty() && open_.back().remaining == 0) {
            open_.pop_back();
            builder_.Close();
        }
        return open_.empty();
    }

    void Fail(const std::string& message) {
        root_.SetError(message);
        failed_ = true;
    }

    void FailTruncated(std::size_t width) {
        Fail(FormatMessage("Invalid MessagePack data. %1-bit integer value at position %2 is truncated.",
                           {width * 8, position_}));
    }

    // Each width on its own, so that the compiler reads the bytes as one number.
    template <std::size_t Width>
    static std::uint64_t BigEndian(const std::uint8_t* bytes) {
        std::uint64_t number = 0;
        for (std::size_t index = 0; index < Width; ++index) {
            number = number << 8 | bytes[index];
        }
        return number;
    }

    // A big-endian number of width bytes (1, 2, 4 or 8); false (with the error)
    // when the input is too short.
    bool ReadNumber(std::size_t width, std::uint64_t& number) {
        if (length_ - position_ < width) {
            FailTruncated(width);
            return false;
        }
        const std::uint8_t* bytes = data_ + position_;
        switch (width) {
            case 1:
                number = BigEndian<1>(bytes);
                break;
            case 2:
                number = BigEndian<2>(bytes);
                break;
            case 4:
                number = BigEndian<4>(bytes);
                break;
            default:
                number = BigEndian<8>(bytes);
                break;
        }
        position_ += width;
        return true;
    }

    // The bytes of a string or bin payload whose length takes lengthWidth bytes.
    bool ReadPayload(std::size_t lengthWidth, bool isString, std::string_view& payload) {
        std::uint64_t size = 0;
        if (!ReadNumber(lengthWidth, size)) {
            return false;
        }
        return TakePayload(size, isString, payload);
    }

    bool TakePayload(std::uint64_t size, bool isString, std::string_view& payload) {
        if (length_ - position_ < size) {
            Fail(FormatMessage(isString
                                   ? "Invalid MessagePack data. String of size %1 at position %2 is truncated."
                                   : "Invalid MessagePack data. Raw bytes of size %1 at position %2 are truncated.",
                               {size, position_}));
            return false;
        }
        payload = {reinterpret_cast<const char*>(data_ + position_), static_cast<std::size_t>(size)};
        position_ += size;
        return true;
    }

    void ReadKey() {
        const std::uint8_t marker = data_[position_++];
        std::string_view key;
        bool read = false;
        if (marker >= 0xA0 && marker <= 0xBF) {
            read = TakePayload(marker & 0x1F, true, key);
        } else if (marker >= 0xD9 && marker <= 0xDB) {
            read = ReadPayload(std::size_t{1} << (marker - 0xD9), true, key);
        } else {
            Fail(FormatMessage("Invalid MessagePack data at position %1. Map keys must be strings.", {position_}));
        }
        if (read) {
            builder_.Key(key);
            CountItem();
        }
    }

    void Open(std::uint64_t count, bool isMap) {
        if (isMap) {
            builder_.OpenStructure();
        } else {
            builder_.OpenCollection();
        }
        if (count == 0) {
            builder_.Close();
        } else {
            open_.push_back({isMap ? count * 2 : count, isMap});
        }
    }

    void ReadSized(std::uint8_t marker) {
        std::uint64_t number = 0;
        std::string_view payload;
        switch (marker) {
            case 0xC4:
            case 0xC5:
            case 0xC6:
                if (ReadPayload(std::size_t{1} << (marker - 0xC4), false, payload)) {
                    const auto* bytes = reinterpret_cast<const std::uint8_t*>(payload.data());
                    builder_.NextValue().SetBlob(std::span<const std::uint8_t>(bytes, payload.size()));
                }
                break;
            case 0xCA:
                if (ReadNumber(4, number)) {
                    builder_.NextValue().SetFloat(std::bit_cast<float>(static_cast<std::uint32_t>(number)));
                }
                break;
            case 0xCB:
                if (ReadNumber(8, number)) {
                    builder_.NextValue().SetFloat(std::bit_cast<double>(number));
                }
                break;
            case 0xCC:
            case 0xCD:
            case 0xCE:
            case 0xCF:
                if (ReadNumber(std::size_t{1} << (marker - 0xCC), number)) {
                    builder_.NextValue().SetUnsigned(number);
                }
                break;
            case 0xD0:
            case 0xD1:
            case 0xD2:
            case 0xD3:
                ReadSigned(std::size_t{1} << (marker - 0xD0));
                break;
            case 0xD9:
            case 0xDA:
            case 0xDB:
                if (ReadPayload(std::size_t{1} << (marker - 0xD9), true, payload)) {
                    builder_.NextValue().SetString(payload);
                }
                break;
            case 0xDC:
            case 0xDD:
                if (ReadNumber(marker == 0xDC ? 2 : 4, number)) {
                    Open(number, false);
                }
                break;
            case 0xDE:
            case 0xDF:
                if (ReadNumber(marker == 0xDE ? 2 : 4, number)) {
                    Open(number, true);
                }
                break;
            default:  // the never-used marker and the extension types
                Fail(FormatMessage("Invalid MessagePack data at position %1.", {position_}));
                break;
        }
    }

    void ReadSigned(std::size_t width) {
        std::uint64_t number = 0;
        if (!ReadNumber(width, number)) {
            return;
        }
        // Sign-extends the width's top bit through the 64 bits.
        const unsigned unusedBits = 64 - 8 * static_cast<unsigned>(width);
        builder_.NextValue().SetSigned(static_cast<std::int64_t>(number << unusedBits) >> unusedBits);
    }

    void ReadValue() {
        const std::uint8_t marker = data_[position_++];
        CountItem();
        if (marker <= 0x7F) {
            builder_.NextValue().SetSigned(marker);
        } else if (marker >= 0xE0) {
            builder_.NextValue().SetSigned(static_cast<std::int8_t>(marker));
        } else if (marker <= 0x8F) {
            Open(marker & 0x0F, true);
        } else if (marker <= 0x9F) {
            Open(marker & 0x0F, false);
        } else if (marker <= 0xBF) {
            std::string_view text;
            if (TakePayload(marker & 0x1F, true, text)) {
                builder_.NextValue().SetString(text);
            }
        } else if (marker == 0xC0) {
            builder_.NextValue();  // nil is an empty value
        } else if (marker == 0xC2 || marker == 0xC3) {
            builder_.NextValue().SetBool(marker == 0xC3);
        } else {
            ReadSized(marker);
        }
    }

    const std::uint8_t* data_;
    std::size_t length_;
    std::size_t position_ = 0;
    BindingProperty& root_;
    BindingTreeBuilder builder_;
    std::vector<OpenContainer> open_;
    bool failed_ = false;
};

}  // namespace

MessagePackResult ReadMessagePack(const std::uint8_t* data, std::size_t length) {
    MessagePackResult result{BindingProperty(), 0};
    MessagePackReader reader(data, length, result.value);
    result.consumed = reader.Run();
    return result;
}

}  // namespace wex
