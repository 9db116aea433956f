// The Blowfish block cipher.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace connectdialog {

/// 64-bit blocks, 16 rounds, keys of 1 to 56 bytes; with chaining (CBC) or without (ECB). Source: B. Schneier,
/// "Description of a New Variable-Length Key, 64-Bit Block Cipher (Blowfish)", Fast Software Encryption, 1994.
///
/// An object enciphers or deciphers one message: Init, then calls that continue each other. Copies continue on their
/// own. The key's tables are wiped when the object ends. Not to be used by two threads at once.
class VCipherBlowfish {
  public:
    static constexpr std::size_t kBlockSize = 8;
    static constexpr std::uint32_t kLongestKey = 56;

    VCipherBlowfish() = default;
    VCipherBlowfish(const VCipherBlowfish&) = default;
    VCipherBlowfish& operator=(const VCipherBlowfish&) = default;
    virtual ~VCipherBlowfish();

    /// Bytes: 8, for what goes in and for what comes out.
    virtual std::uint32_t GetBlockSize() const { return kBlockSize; }
    virtual std::uint32_t GetOutputBlockSize() const { return kBlockSize; }
    /// Bytes that Init takes of a key; 16 at first.
    virtual std::uint32_t GetKeyLength() const { return keyLength; }

    /// Begins a message. Requires: the modes below are set; `iv` has 8 bytes and `key` GetKeyLength() bytes.
    virtual void Init(const std::uint8_t* iv, const std::uint8_t* key);
    /// The same: one key schedule serves both directions.
    virtual void InitDecipher(const std::uint8_t* iv, const std::uint8_t* key) { Init(iv, key); }

    /// Takes min(outSize, inSize) bytes, rounded down to whole blocks, and gives their number; 0 does nothing. `out`
    /// may be `in`; otherwise they do not overlap.
    virtual std::size_t Encipher(std::uint8_t* out, std::size_t outSize, const std::uint8_t* in, std::size_t inSize);
    virtual std::size_t Decipher(std::uint8_t* out, std::size_t outSize, const std::uint8_t* in, std::size_t inSize);

    /// Requires: 1 to kLongestKey.
    void SetKeyLength(std::uint32_t bytes) { keyLength = bytes; }
    /// Whether the two words of a block, and of the vector, are little-endian; not so at first, which is the standard.
    void SetNativeByteOrder(bool isNative) { nativeByteOrder = isNative; }
    /// Whether each block is combined with the one before it; so at first.
    void SetChained(bool isChained) { chained = isChained; }

  private:
    struct Block {
        std::uint32_t left;
        std::uint32_t right;
    };

    void ExpandKey(const std::uint8_t* key);
    std::uint32_t Mix(std::uint32_t word) const;
    Block EncipherBlock(Block block) const;
    Block DecipherBlock(Block block) const;
    Block LoadBlock(const std::uint8_t* bytes) const;
    void StoreBlock(Block block, std::uint8_t* bytes) const;

    std::array<std::uint32_t, 18> subkeys{};
    std::array<std::uint32_t, 1024> boxes{};
    std::uint32_t keyLength = 16;
    Block state{};
    bool nativeByteOrder = false;
    bool chained = true;
};

}  // namespace connectdialog
