// A service in a language that has no library for the protocol: it reads and writes the lines by itself.
#include <cstdlib>
#include <iostream>
#include <string>
#include <unistd.h>

namespace {

int inOut = 3;

std::string ReadLine() {
    static std::string buffer;
    std::size_t end = 0;
    while ((end = buffer.find('\n')) == std::string::npos) {
        char bytes[4096];
        const ssize_t count = ::read(inOut, bytes, sizeof bytes);
        if (count <= 0)
            std::exit(0); // the application has ended
        buffer.append(bytes, static_cast<std::size_t>(count));
    }
    std::string line = buffer.substr(0, end);
    buffer.erase(0, end + 1);
    return line;
}

void WriteLine(const std::string& line) {
    const std::string bytes = line + "\n";
    for (std::size_t written = 0; written < bytes.size();) {
        const ssize_t count = ::write(inOut, bytes.data() + written, bytes.size() - written);
        if (count <= 0)
            std::exit(0);
        written += static_cast<std::size_t>(count);
    }
}

// What stands behind "key": up to the next comma or bracket; enough for the messages that this program gets.
std::string Field(const std::string& line, const std::string& key) {
    const std::size_t at = line.find("\"" + key + "\":");
    if (at == std::string::npos)
        return {};
    const std::size_t begin = at + key.size() + 3;
    if (line[begin] == '"')
        return line.substr(begin + 1, line.find('"', begin + 1) - begin - 1);
    return line.substr(begin, line.find_first_of(",}]", begin) - begin);
}

void Serve(const std::string& line);

void Ask(const std::string& id, const std::string& request) {
    WriteLine("{\"id\":" + id + "," + request + "}");
    for (;;) {
        const std::string line = ReadLine();
        if (line.find("\"result\":") != std::string::npos || line.find("\"failure\":") != std::string::npos)
            return;
        Serve(line);
    }
}

void Serve(const std::string& line) {
    const std::string id = Field(line, "id");
    if (id.empty())
        return; // hello and release
    std::string result = "null";
    const std::string call = Field(line, "call");
    if (!Field(line, "create").empty())
        result = R"({"process":1,"class":"Echo"})";
    else if (call == "OnWork")
        Ask("1", R"("on":1,"set":"Status","value":"worked")");
    else if (call == "OnEcho")
        result = "\"" + Field(line, "arguments").substr(2);
    else if (call == "OnRecurse") {
        Ask("2", R"("on":2,"call":"FindService","arguments":["Birds"])");
        WriteLine("{\"id\":" + id + R"(,"failure":{"number":-1,"description":"no further"}})");
        return;
    }
    WriteLine("{\"id\":" + id + ",\"result\":" + result + "}");
}

} // namespace

int main() {
    if (const char* number = std::getenv("CORVANE_SOCKET"))
        inOut = std::atoi(number);
    std::cout << "I speak for myself" << std::endl;
    WriteLine(R"({"hello":"corvane","protocol":1,"language":"C++","classes":[{"name":"Echo","kind":"service",)"
              R"("members":[{"name":"OnWork","parameters":0},{"name":"OnEcho","parameters":1},)"
              R"({"name":"OnRecurse","parameters":0}]}]})");
    for (;;)
        Serve(ReadLine());
}
