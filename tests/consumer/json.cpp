// jsoncpp, as a host finds it in the library: its functions, objects, streams and exceptions cross
// the border of the DLL.
#include <cstdio>
#include <json/json.h>
#include <sstream>

int main() {
    const std::string text = "{\"results\":[{\"id\":7},{\"id\":-7.5},\"Grüße\"]} // end";
    Json::Reader reader;
    Json::Value root;
    if (!reader.parse(text, root) || reader.parse("[1,", root["broken"]))
        return 1;
    root.removeMember("broken");

    const std::string written = Json::FastWriter().write(root);
    const Json::Value& second = Json::Path(".results[1].id").resolve(root);
    int sum = 0;
    for (const Json::Value& result : root["results"])
        sum += result.isObject() ? result["id"].asInt() : 0;

    std::istringstream in(text);
    std::ostringstream out;
    std::string errors;
    Json::Value again;
    if (!Json::parseFromStream(Json::CharReaderBuilder(), in, &again, &errors) || again != root)
        return 2;
    Json::StyledStreamWriter().write(out, again);
    const std::string block = Json::writeString(Json::StreamWriterBuilder(), again);
    if (Json::Value::nullSingleton() != again["none"] || out.str().empty() || block.empty())
        return 3;

    bool deep = false;
    try {
        reader.parse(std::string(1'000'000, '['), again);
    } catch (const Json::RuntimeError&) {
        deep = true;
    }
    try {
        root["results"].asInt();
    } catch (const Json::LogicError& error) {
        std::printf("%s%g %d %d %s\n", written.c_str(), second.asDouble(), sum, deep, error.what());
    }
    return 0;
}
