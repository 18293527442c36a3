#include "host/base/md5.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

std::string Hex(const host::Md5::Digest& digest) {
    std::string text;
    for (const std::uint8_t byte : digest) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", static_cast<unsigned>(byte));
        text += digits;
    }
    return text;
}

std::string DigestInPieces(const std::string& bytes, std::size_t piece) {
    host::Md5 md5;
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        md5.Update(bytes.data() + at, std::min(piece, bytes.size() - at));
    return Hex(md5.Finish());
}

TEST(Md5Test, AgreesWithThePublishedDigests) {
    const std::pair<const char*, const char*> suite[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"}};
    for (const auto& [text, digest] : suite)
        EXPECT_EQ(DigestInPieces(text, 100), digest) << text;
}

// Around the block, the padding and the piece in which files are read; digests by another program.
TEST(Md5Test, HoldsAtTheBordersHoweverTheBytesAreCut) {
    const std::pair<std::size_t, const char*> sizes[] = {
        {55, "8d24280288a696559fd8d5aa1b6d8c6e"},    {56, "ef2c72b7254c92459e498eddd4ace573"},
        {63, "c4c8c6d513f4e1604eb18508a1769364"},    {64, "a2fcb39a253b9b785b1f97518fa37683"},
        {119, "1640deea49ebb258ec6ede18d4b2d2d7"},   {120, "05f879f7b542a7ebf0605adff67d4423"},
        {16383, "22117611a3f0a07b6d4f6c6a6669b1a1"}, {16384, "1dca1ee011b0bc5b6b0a230c2d2ee975"},
        {16385, "b3fd705cd8bfceeff543415bc857d820"}};
    for (const auto& [size, digest] : sizes) {
        std::string bytes;
        for (std::size_t i = 0; i < size; ++i)
            bytes += static_cast<char>((i * 7 + (i >> 8)) & 255);
        for (const std::size_t piece :
             {std::size_t{1}, std::size_t{3}, std::size_t{61}, std::size_t{65}, size})
            EXPECT_EQ(DigestInPieces(bytes, piece), digest) << size << " in pieces of " << piece;
    }
}

}  // namespace
