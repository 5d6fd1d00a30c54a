#include "demo/Options.h"

#include <gtest/gtest.h>

#include <vector>

namespace larkspool::demo {
namespace {

std::variant<Options, std::string> Parse(const std::vector<const char*>& arguments) {
    return ParseOptions(arguments);
}

Options Good(const std::vector<const char*>& arguments) {
    const auto parsed = Parse(arguments);
    if (const auto* problem = std::get_if<std::string>(&parsed)) {
        ADD_FAILURE() << *problem;
        return {};
    }
    return std::get<Options>(parsed);
}

TEST(Options, PortsMayBeARangeAListOrTheSystemsChoice) {
    using Ports = std::array<std::uint16_t, 7>;
    EXPECT_EQ(Good({}).ports, (Ports{8073, 8074, 8075, 8076, 8077, 8078, 8079}));
    EXPECT_EQ(Good({"--ports", "9000"}).ports, (Ports{9000, 9001, 9002, 9003, 9004, 9005, 9006}));
    EXPECT_EQ(Good({"--ports=9000-9006"}).ports, Good({"--ports", "9000"}).ports);
    EXPECT_EQ(Good({"--ports", "7,6,5,4,3,2,0"}).ports, (Ports{7, 6, 5, 4, 3, 2, 0}));
    EXPECT_EQ(Good({"--ports", "0"}).ports, Ports{});
}

TEST(Options, ValuesArriveInTheirUnits) {
    const Options options =
        Good({"--rate", "12000.9", "--jitter-ms=150", "--drop-after", "2.5", "--busy", "--seed",
              "7", "--newest", "1.4.0", "--http-port", "0", "--bind", "0.0.0.0", "--quiet"});
    EXPECT_DOUBLE_EQ(options.rate, 12000.9);
    EXPECT_DOUBLE_EQ(options.jitterSeconds, 0.15);
    EXPECT_DOUBLE_EQ(options.dropAfterSeconds, 2.5);
    EXPECT_TRUE(options.busy);
    EXPECT_EQ(options.seed, 7U);
    EXPECT_EQ(options.newest, "1.4.0");
    EXPECT_EQ(options.httpPort, 0);
    EXPECT_EQ(options.bindAddress, "0.0.0.0");
    EXPECT_TRUE(options.quiet);
}

TEST(Options, MistakesAreNamed) {
    const std::vector<std::vector<const char*>> mistakes{{"--prots", "1"},
                                                         {"--ports", "8073-8075"},
                                                         {"--ports", "65530"},
                                                         {"--ports", "1,2,3"},
                                                         {"--ports", "1,2,3,4,5,6,7,8"},
                                                         {"--ports", ""},
                                                         {"--rate", "fast"},
                                                         {"--rate", "nan"},
                                                         {"--rate", "0"},
                                                         {"--rate", "12000x"},
                                                         {"--http-port", "70000"},
                                                         {"--jitter-ms", "-1"},
                                                         {"--newest", "a<b>"},
                                                         {"--rate"},
                                                         {"extra"}};
    for (const auto& arguments : mistakes) {
        const auto parsed = Parse(arguments);
        const auto* problem = std::get_if<std::string>(&parsed);
        ASSERT_TRUE(problem) << arguments.back();
        EXPECT_NE(problem->find(arguments.front()), std::string::npos) << *problem;
    }
}

} // namespace
} // namespace larkspool::demo
