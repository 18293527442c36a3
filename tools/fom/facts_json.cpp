#include <nlohmann/json.hpp>

#include "fom/facts.h"

namespace command {

struct FactsJson {
    static nlohmann::ordered_json Of(const Facts& facts) {
        nlohmann::ordered_json json = nlohmann::ordered_json::object();
        for (const Facts::Fact& fact : facts.m_facts)
            json[fact.name] = std::visit([](const auto& value) { return Of(value); }, fact.value);
        return json;
    }
    static nlohmann::ordered_json Of(const Facts::Number& number) { return number.value; }
    static nlohmann::ordered_json Of(const Facts::Rows& rows) {
        nlohmann::ordered_json json = nlohmann::ordered_json::array();
        for (const Facts& row : rows)
            json.push_back(Of(row));
        return json;
    }
    static nlohmann::ordered_json Of(const std::string& text) { return text; }
    static nlohmann::ordered_json Of(double number) { return number; }
    static nlohmann::ordered_json Of(bool flag) { return flag; }
};

std::string Facts::ToJson() const {
    return FactsJson::Of(*this).dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace command
