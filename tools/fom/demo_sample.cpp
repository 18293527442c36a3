#include "fom/demo_sample.h"

#include <algorithm>
#include <tuple>

#include "host/base/md5.h"

namespace command {
namespace {

host::Md5::Digest DigestOf(const std::string& name) {
    host::Md5 md5;
    md5.Update(name.data(), name.size());
    return md5.Finish();
}

}  // namespace

std::vector<std::size_t> PickSample(const std::vector<std::string>& names, std::size_t count) {
    std::vector<std::tuple<host::Md5::Digest, std::string, std::size_t>> order;
    order.reserve(names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        order.emplace_back(DigestOf(names[i]), names[i], i);
    std::sort(order.begin(), order.end());
    order.resize(std::min(order.size(), count));
    std::vector<std::size_t> places;
    places.reserve(order.size());
    for (const auto& [digest, name, place] : order)
        places.push_back(place);
    std::sort(places.begin(), places.end());
    return places;
}

}  // namespace command
