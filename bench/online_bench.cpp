// Downloads over loopback beside the same calls of WinINet alone. bench.sh starts the server.

#include "bench/support/Comparison.h"
#include "bench/support/MeasuringFolder.h"
#include "common/Handles.h"
#include "vtrfutls/InternetAccess.h"
#include "vtrfutls/InternetDownload.h"

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <wininet.h>

namespace {

constexpr char alone[] = "WinINet alone";

/// "http://localhost:40001"; the line of offers names the port.
std::string Service() {
    const char* const offers = std::getenv("VTRUTILS_SERVICES");
    const char* const port = offers != nullptr ? std::strstr(offers, "plain=") : nullptr;
    return "http://localhost:" + (port != nullptr ? std::to_string(std::atoi(port + 6)) : "0");
}

bool DownloadAlone(HINTERNET session, const char* url, const char* path) {
    const vtr::FileHandle file(
        CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    const HINTERNET reply = InternetOpenUrlA(
        session, url, nullptr, 0, INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE, 0);
    static char bytes[256 * 1024];
    DWORD got = 0;
    DWORD written = 0;
    bool good = reply != nullptr;
    while (good && (good = InternetReadFile(reply, bytes, sizeof bytes, &got)) && got > 0)
        good = WriteFile(file.Get(), bytes, got, &written, nullptr);
    InternetCloseHandle(reply);
    return good;
}

void Measure(const char* work, const char* size, const std::string& target, std::int64_t bytes) {
    const auto folder = std::make_shared<bench::MeasuringFolder>();
    const auto access = std::make_shared<MyInternetAccess>("bench", /*throughProxy=*/false);
    void* session = nullptr;
    std::memcpy(&session, access.get(), sizeof session);
    const std::string url = Service() + target;
    const std::string path = folder->Write("reply", "");
    bench::Measure(work, size, bench::ours, [=](benchmark::State& state) {
        CInternetDownload download;
        for (auto _ : state) {
            download.StartDownload(session, url.c_str(), path.c_str(), 0);
            while (download.IsDownloading())
                Sleep(1);
        }
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * bytes);
        if (!download.WasSuccessful() || folder == nullptr || access == nullptr)
            state.SkipWithError("not downloaded");
    });
    bench::Measure(work, size, alone, [=](benchmark::State& state) {
        bool good = true;
        for (auto _ : state)
            good = DownloadAlone(session, url.c_str(), path.c_str()) && good;
        state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * bytes);
        if (!good || folder == nullptr || access == nullptr)
            state.SkipWithError("not downloaded");
    });
}

} // namespace

int main(int argc, char** argv) {
    static constexpr char work[] = "download into a file";
    Measure("small download into a file", "1,708 bytes", "/ws/1/artist/?type=xml", 1708);
    Measure(work, "100 MB", "/fault-large", 100 << 20);
    bench::ToReach(work, alone, 0.9);
    return bench::Run(argc, argv);
}
