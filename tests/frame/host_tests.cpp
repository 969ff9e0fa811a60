// Hosts that are no test programs: they have no application object and do not start the framework.
#include "support/registered_product.h"
#include "support/test.h"

TEST(Host, NeedsNoApplicationObject)
{
    ZO_ONLY_IN(IsNt(), "the hosts run on no other family, which has another registry");
    const RegisteredProduct product;
    const TestFolder folder;
    EXPECT_EQ(0u, RunProgram("plain_host.exe"));
    EXPECT_EQ(0u, RunProgram("cmd /c readme_example.exe > \"" + folder.Path("output") + "\""));
    const std::string line = folder.Read("output");
    EXPECT_GT(std::stoi(line), 200) << line;
    EXPECT_NE(std::string::npos, line.find(" countries, from ")) << line;
}
