#include "profile/vcipherblowfish.h"

#include <algorithm>

#include "foundation/byteorder.h"
#include "foundation/securewipe.h"
#include "profile/blowfishtables.h"

namespace connectdialog {

VCipherBlowfish::~VCipherBlowfish() {
    SecureWipe(subkeys.data(), sizeof subkeys);
    SecureWipe(boxes.data(), sizeof boxes);
    SecureWipe(&state, sizeof state);
}

void VCipherBlowfish::Init(const std::uint8_t* iv, const std::uint8_t* key) {
    state = LoadBlock(iv);
    ExpandKey(key);
}

void VCipherBlowfish::ExpandKey(const std::uint8_t* key) {
    subkeys = kBlowfishSubkeys;
    boxes = kBlowfishBoxes;
    std::uint32_t position = 0;
    for (std::uint32_t& subkey : subkeys) {
        std::uint32_t word = 0;
        for (int i = 0; i < 4; ++i) {
            word = word << 8 | key[position];
            position = position + 1 < keyLength ? position + 1 : 0;
        }
        subkey ^= word;
    }
    Block block{};
    const auto replace = [&](auto& words) {
        for (std::size_t i = 0; i < words.size(); i += 2) {
            block = EncipherBlock(block);
            words[i] = block.left;
            words[i + 1] = block.right;
        }
    };
    replace(subkeys);
    replace(boxes);
}

inline std::uint32_t VCipherBlowfish::Mix(std::uint32_t word) const {
    const std::uint32_t sum = boxes[word >> 24] + boxes[256 + (word >> 16 & 0xFF)];
    return (sum ^ boxes[512 + (word >> 8 & 0xFF)]) + boxes[768 + (word & 0xFF)];
}

inline VCipherBlowfish::Block VCipherBlowfish::EncipherBlock(Block block) const {
    for (std::size_t round = 0; round < 16; round += 2) {
        block.left ^= subkeys[round];
        block.right ^= Mix(block.left) ^ subkeys[round + 1];
        block.left ^= Mix(block.right);
    }
    return {block.right ^ subkeys[17], block.left ^ subkeys[16]};
}

inline VCipherBlowfish::Block VCipherBlowfish::DecipherBlock(Block block) const {
    for (std::size_t round = 17; round > 1; round -= 2) {
        block.left ^= subkeys[round];
        block.right ^= Mix(block.left) ^ subkeys[round - 1];
        block.left ^= Mix(block.right);
    }
    return {block.right ^ subkeys[0], block.left ^ subkeys[1]};
}

VCipherBlowfish::Block VCipherBlowfish::LoadBlock(const std::uint8_t* bytes) const {
    if (nativeByteOrder) return {LoadLittleEndian<std::uint32_t>(bytes), LoadLittleEndian<std::uint32_t>(bytes + 4)};
    return {LoadBigEndian<std::uint32_t>(bytes), LoadBigEndian<std::uint32_t>(bytes + 4)};
}

void VCipherBlowfish::StoreBlock(Block block, std::uint8_t* bytes) const {
    if (nativeByteOrder) {
        StoreLittleEndian(block.left, bytes);
        StoreLittleEndian(block.right, bytes + 4);
    } else {
        StoreBigEndian(block.left, bytes);
        StoreBigEndian(block.right, bytes + 4);
    }
}

std::size_t VCipherBlowfish::Encipher(std::uint8_t* out, std::size_t outSize, const std::uint8_t* in,
                                      std::size_t inSize) {
    const std::size_t size = std::min(outSize, inSize) / kBlockSize * kBlockSize;
    for (std::size_t i = 0; i < size; i += kBlockSize) {
        Block block = LoadBlock(in + i);
        if (chained) block = {block.left ^ state.left, block.right ^ state.right};
        block = EncipherBlock(block);
        if (chained) state = block;
        StoreBlock(block, out + i);
    }
    return size;
}

std::size_t VCipherBlowfish::Decipher(std::uint8_t* out, std::size_t outSize, const std::uint8_t* in,
                                      std::size_t inSize) {
    const std::size_t size = std::min(outSize, inSize) / kBlockSize * kBlockSize;
    for (std::size_t i = 0; i < size; i += kBlockSize) {
        const Block given = LoadBlock(in + i);
        Block block = DecipherBlock(given);
        if (chained) {
            block = {block.left ^ state.left, block.right ^ state.right};
            state = given;
        }
        StoreBlock(block, out + i);
    }
    return size;
}

}  // namespace connectdialog
