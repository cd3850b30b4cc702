#include "tests/support/RecordedServices.h"

#include "tests/support/TestFolder.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <winsock2.h>

#include <wincrypt.h>

namespace {

/// "" when the services do not offer it.
std::string Offer(const std::string& name) {
    const char* const all = std::getenv("VTRUTILS_SERVICES");
    const std::string offers = all != nullptr ? " " + std::string(all) + " " : "";
    const std::size_t at = offers.find(" " + name + "=");
    if (at == offers.npos)
        return {};
    const std::size_t begin = at + name.size() + 2;
    return offers.substr(begin, offers.find(' ', begin) - begin);
}

/// All that the server of control requests sends back.
std::string Exchange(const std::string& request) {
    WSADATA data;
    EXPECT_EQ(WSAStartup(MAKEWORD(2, 2), &data), 0);
    const SOCKET client = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<u_short>(std::atoi(Offer("plain").c_str())));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    std::string answer;
    if (connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
        for (std::size_t sent = 0; sent < request.size();) {
            const int now = send(client, request.data() + sent,
                                 static_cast<int>(request.size() - sent), /*flags=*/0);
            if (now <= 0)
                break;
            sent += static_cast<std::size_t>(now);
        }
        char part[4096];
        for (int count = 0; (count = recv(client, part, sizeof part, /*flags=*/0)) > 0;)
            answer.append(part, static_cast<std::size_t>(count));
    }
    closesocket(client);
    WSACleanup();
    return answer;
}

} // namespace

std::string ServiceAddress(const std::string& port) {
    EXPECT_NE(Offer(port), "") << "no recorded services";
    return "localhost:" + Offer(port);
}

std::string ServiceControl(const std::string& command, std::string_view body) {
    std::string request = (body.empty() ? "GET" : "POST") + (" /control/" + command) +
                          " HTTP/1.1\r\nContent-Length: " + std::to_string(body.size()) +
                          "\r\n\r\n";
    request += body;
    const std::string answer = Exchange(request);
    EXPECT_EQ(answer.rfind("HTTP/1.1 200 ", 0), 0u) << command << ": " << answer;
    const std::size_t head = answer.find("\r\n\r\n");
    return head != answer.npos ? answer.substr(head + 4) : "";
}

TrustedAuthority::TrustedAuthority() {
    const std::string bytes = ReadBytes("Z:" + Offer("authority"));
    const HCERTSTORE store = CertOpenSystemStoreA(0, "ROOT");
    PCCERT_CONTEXT made = nullptr;
    EXPECT_TRUE(CertAddEncodedCertificateToStore(
        store, X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(bytes.data()),
        static_cast<DWORD>(bytes.size()), CERT_STORE_ADD_REPLACE_EXISTING, &made));
    certificate = made;
    // While the certificate is held, closing the store does not write it.
    EXPECT_TRUE(CertControlStore(store, /*dwFlags=*/0, CERT_STORE_CTRL_COMMIT, nullptr));
    CertCloseStore(store, /*dwFlags=*/0);
}

TrustedAuthority::~TrustedAuthority() {
    EXPECT_TRUE(CertDeleteCertificateFromStore(static_cast<PCCERT_CONTEXT>(certificate)));
}
