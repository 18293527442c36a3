// Our MD5 and OpenSSL's, one buffer at a time, as digests of pattern data are made.

#include <cstddef>
#include <openssl/evp.h>
#include <string>
#include <vector>

#include "host/base/md5.h"

#include "ratio.h"

namespace {

std::vector<unsigned char> Bytes(const benchmark::State& state) {
    std::vector<unsigned char> bytes(static_cast<std::size_t>(state.range(0)));
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<unsigned char>(i * 131 >> 3);
    return bytes;
}

void Ours(benchmark::State& state) {
    const std::vector<unsigned char> bytes = Bytes(state);
    for (auto _ : state) {
        host::Md5 md5;
        md5.Update(bytes.data(), bytes.size());
        benchmark::DoNotOptimize(md5.Finish());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

void OpenSsl(benchmark::State& state) {
    const std::vector<unsigned char> bytes = Bytes(state);
    EVP_MD_CTX* context = EVP_MD_CTX_new();
    const EVP_MD* md5 = EVP_md5();
    unsigned char digest[EVP_MAX_MD_SIZE];
    for (auto _ : state) {
        EVP_DigestInit_ex(context, md5, nullptr);
        EVP_DigestUpdate(context, bytes.data(), bytes.size());
        EVP_DigestFinal_ex(context, digest, nullptr);
        benchmark::DoNotOptimize(digest);
    }
    EVP_MD_CTX_free(context);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * state.range(0));
}

BENCHMARK(Ours)->Arg(1 << 14)->Arg(1 << 16)->Arg(1 << 20);
BENCHMARK(OpenSsl)->Arg(1 << 14)->Arg(1 << 16)->Arg(1 << 20);

}  // namespace

int main(int argc, char** argv) {
    std::vector<bench::Row> rows;
    for (const char* size : {"16384", "65536", "1048576"}) {
        const std::string name = std::string("/") + size;
        rows.push_back({std::string("MD5 of ") + size + " bytes", "Ours" + name, "OpenSsl" + name, 0.95,
                        bench::Row::Throughput});
    }
    return bench::RunAndCompare(argc, argv, rows);
}
