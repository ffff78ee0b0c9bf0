#include "dialogs/import/sheet_list.h"

#include <QTimer>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

namespace lumoplot {

using namespace std::chrono_literals;

/// The thread is left to itself when nobody waits for it any more.
void ListSheets(QObject& context, const std::string& fileName,
                const std::function<void(const std::vector<TBookSheet>&)>& take) {
    constexpr auto kUnnoticed = 60ms;
    auto promise = std::make_shared<std::promise<std::vector<TBookSheet>>>();
    const std::shared_future<std::vector<TBookSheet>> sheets = promise->get_future();
    std::thread([promise, fileName] {
        try {
            promise->set_value(SheetsOf(fileName));
        } catch (...) {
            promise->set_value({});
        }
    }).detach();
    if (sheets.wait_for(kUnnoticed) == std::future_status::ready) return take(sheets.get());
    auto* look = new QTimer(&context);
    QObject::connect(look, &QTimer::timeout, &context, [look, sheets, take] {
        if (sheets.wait_for(0s) != std::future_status::ready) return;
        look->stop();
        look->deleteLater();
        take(sheets.get());
    });
    look->start(kUnnoticed);
}

} // namespace lumoplot
