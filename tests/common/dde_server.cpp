#include "common/dde_server.h"

#if defined(_WIN32)
#include <windows.h>

#include <ddeml.h>

namespace lumoplot {
namespace {

// DDE calls a function that knows of no object.
struct TServerState {
    DWORD instance = 0;
    HSZ service = nullptr;
    HSZ topic = nullptr;
    HSZ item = nullptr;
    std::string text;
    int asked = 0;
};

TServerState server;

HDDEDATA CALLBACK Serve(UINT type, UINT format, HCONV, HSZ topic, HSZ item, HDDEDATA, ULONG_PTR, ULONG_PTR) {
    const bool isOurs = DdeCmpStringHandles(topic, server.topic) == 0;
    const auto answer = [](bool isYes) { return reinterpret_cast<HDDEDATA>(static_cast<UINT_PTR>(isYes)); };
    if (type == XTYP_CONNECT) return answer(isOurs && DdeCmpStringHandles(item, server.service) == 0);
    if (!isOurs || format != CF_TEXT || DdeCmpStringHandles(item, server.item) != 0) return nullptr;
    if (type == XTYP_ADVSTART) return answer(true);
    if (type != XTYP_REQUEST && type != XTYP_ADVREQ) return nullptr;
    if (type == XTYP_REQUEST) ++server.asked;
    return DdeCreateDataHandle(server.instance, reinterpret_cast<BYTE*>(server.text.data()),
                               static_cast<DWORD>(server.text.size() + 1), 0, server.item, CF_TEXT, 0);
}

} // namespace

TDdeServer::TDdeServer(const std::string& service) {
    server = {};
    DdeInitializeW(&server.instance, Serve, APPCLASS_STANDARD, 0);
    server.service = DdeCreateStringHandleA(server.instance, service.c_str(), CP_WINANSI);
    server.topic = DdeCreateStringHandleA(server.instance, "data", CP_WINANSI);
    server.item = DdeCreateStringHandleA(server.instance, "table", CP_WINANSI);
    DdeNameService(server.instance, server.service, nullptr, DNS_REGISTER);
}

TDdeServer::~TDdeServer() {
    DdeNameService(server.instance, nullptr, nullptr, DNS_UNREGISTER);
    DdeUninitialize(server.instance);
}

void TDdeServer::SetText(const std::string& text) {
    server.text = text;
    DdePostAdvise(server.instance, server.topic, server.item);
}

int TDdeServer::TimesAsked() const {
    return server.asked;
}

} // namespace lumoplot
#endif
