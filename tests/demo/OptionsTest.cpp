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

} // namespace
} // namespace larkspool::demo
