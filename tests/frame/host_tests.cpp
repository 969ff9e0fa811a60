// Hosts that are no test programs: they have no application object and do not start the framework.
#include "product/registered_product.h"
#include "support/test.h"

namespace {

/// Runs a program of the build's, its output in \p folder as "output". \return its exit code.
DWORD RunHost(const std::string& program, const TestFolder& folder)
{
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    const HANDLE output = CreateFileA(folder.Path("output").c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output;
    PROCESS_INFORMATION process = {};
    char path[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, path, sizeof path - 1);
    std::string command(path);
    command = command.substr(0, command.rfind('\\') + 1) + program;
    DWORD code = 1000;
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        if (WaitForSingleObject(process.hProcess, 30000) == WAIT_OBJECT_0)
            GetExitCodeProcess(process.hProcess, &code);
        else
            TerminateProcess(process.hProcess, 1001);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
    CloseHandle(output);
    return code;
}

} // namespace

TEST(Host, NeedsNoApplicationObject)
{
    ZO_ONLY_IN(IsNt(), "the hosts run on no other family, which has another registry");
    const RegisteredProduct product;
    const TestFolder folder;
    EXPECT_EQ(0u, RunHost("plain_host.exe", folder));
    EXPECT_EQ(0u, RunHost("readme_example.exe", folder));
    const std::string line = folder.Read("output");
    EXPECT_GT(std::stoi(line), 200) << line;
    EXPECT_NE(std::string::npos, line.find(" countries, from ")) << line;
}
