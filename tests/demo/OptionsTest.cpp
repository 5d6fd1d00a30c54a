#include "demo/Options.h"

#include <gtest/gtest.h>

#include <vector>

namespace larkspool::demo {
namespace {

using Arguments = std::vector<const char*>;

TEST(Options, ArriveInTheirUnits) {
    using Ports = std::array<std::uint16_t, 7>;
    constexpr Ports row{9000, 9001, 9002, 9003, 9004, 9005, 9006};
    for (const auto& [text, ports] :
         {std::pair{"--ports=9000", row}, std::pair{"--ports=9000-9006", row},
          std::pair{"--ports=7,6,5,4,3,2,0", Ports{7, 6, 5, 4, 3, 2, 0}},
          std::pair{"--ports=0", Ports{}}}) {
        EXPECT_EQ(std::get<Options>(ParseOptions(Arguments{text})).ports, ports) << text;
    }
    const Arguments arguments{"--rate", "12000.9", "--jitter-ms=150", "--drop-after", "2.5",
                              "--seed", "7",       "--newest",        "1.4.0",        "--http-port",
                              "0",      "--bind",  "0.0.0.0",         "--busy",       "--quiet"};
    const auto options = std::get<Options>(ParseOptions(arguments));
    EXPECT_EQ(std::tuple(options.rate, options.jitterSeconds, options.dropAfterSeconds),
              std::tuple(12000.9, 0.15, 2.5));
    EXPECT_EQ(std::tuple(options.seed, options.newest, options.httpPort, options.bindAddress),
              std::tuple(7U, "1.4.0", 0, "0.0.0.0"));
    EXPECT_TRUE(options.busy && options.quiet);
}

TEST(Options, MistakesAreNamed) {
    for (const char* mistake :
         {"--prots=1", "--ports=8073-8075", "--ports=65530", "--ports=1,2,3",
          "--ports=1,2,3,4,5,6,7,8", "--ports=", "--rate=nan", "--rate=0", "--rate=12000x",
          "--http-port=70000", "--jitter-ms=-1", "--newest=a<b>", "--rate"}) {
        const std::string name(
            std::string_view(mistake).substr(0, std::string_view(mistake).find('=')));
        const auto parsed = ParseOptions(Arguments{mistake});
        const auto* problem = std::get_if<std::string>(&parsed);
        EXPECT_TRUE(problem != nullptr && problem->find(name) != std::string::npos) << mistake;
    }
}

} // namespace
} // namespace larkspool::demo
