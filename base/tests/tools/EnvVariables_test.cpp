// EnvVariables_test.cpp: `$(...)` replacement, the environment and the file variables.
#include "orv/EnvVariables.h"

#include "support/QtPrinters.h"

#include <QtCore/QThread>

#include <gtest/gtest.h>

using namespace orv;

namespace {

class EnvVariablesTest : public ::testing::Test {
protected:
    void SetUp() override {
        setEnv("ORV_T_VALUE", "va\"lu\"e");
        setEnv("ORV_T_EMPTY", "");
        qunsetenv("ORV_T_UNSET");
    }
    void TearDown() override {
        qunsetenv("ORV_T_VALUE");
        qunsetenv("ORV_T_EMPTY");
    }
};

// Sets name to each value in turn and expects test() to give its flag; unset it gives false.
void expectFlags(char const *name, std::initializer_list<std::pair<char const *, bool>> rows,
                 bool (*test)()) {
    for (auto [value, expected] : rows) {
        setEnv(name, value);
        EXPECT_EQ(test(), expected) << value;
    }
    qunsetenv(name);
    EXPECT_FALSE(test());
}

} // namespace

TEST_F(EnvVariablesTest, GetEnvDropsQuotesAndTellsUnsetFromEmpty) {
    EXPECT_EQ(getEnv("ORV_T_VALUE"), QLatin1String("value"));
    EXPECT_EQ(getEnv("ORV_T_UNSET"), QString());
    EXPECT_TRUE(hasEnv("ORV_T_EMPTY"));
    EXPECT_FALSE(hasEnv("ORV_T_UNSET"));
    EXPECT_EQ(getEnv("orv_t_value"), QString()); // names are case-sensitive
}

TEST(EnvVariables, IsEnvAcceptsFourSpellingsOfTrueAndOrvvmFollowsIt) {
    // clang-format off
    expectFlags("ORV_T_FLAG", {{"true", true}, {"1", true}, {"TRUE", true}, {"True", true},
                               {"tRUE", false}, {"on", false}, {"0", false}, {"", false}},
                [] { return isEnv("ORV_T_FLAG"); });
    expectFlags("ORVVM", {{"1", true}, {"\"ON\"", true}, {"True", true}, {"0", false}, {"", false}},
                is_running_inside_VM);
    // clang-format on
}

TEST_F(EnvVariablesTest, ReplaceEnvTable) {
    std::pair<char const *, char const *> const rows[] = {
        {"$(ORV_T_VALUE)/x", "value/x"},
        {"a$(ORV_T_VALUE)$(ORV_T_VALUE)", "avaluevalue"},
        {"$(ORV_T_UNSET)/x", "$(ORV_T_UNSET)/x"}, // unknown stays
        {"$(ORV_T_EMPTY)", "$(ORV_T_EMPTY)"},     // empty stays
        {" $(ORV_T_VALUE)", " $(ORV_T_VALUE)"},   // leading blank: untouched
        {"\t$(ORV_T_VALUE)", "\t$(ORV_T_VALUE)"},
        {"a$b", "ab"},           // `$` without `(` is lost
        {"x$(ORV_T_VALUE", "x"}, // unclosed key is dropped
        {"x$", "x"},
        {"", ""},
    };
    for (auto [in, out] : rows)
        EXPECT_EQ(replaceEnv(QLatin1String(in)), QLatin1String(out)) << in;
}

TEST(Replacer, FileVariablesComeFromTheFileAndOverrideTheUserMapping) {
    Replacer r(QFileInfo("C:/x/y.txt"));
    EXPECT_EQ(r.replace("$(G_FILE)|$(G_BASE)|$(G_SUFFIX)"), QLatin1String("y.txt|y|txt"));
    EXPECT_EQ(r.replace("$(UNKNOWN_KEY)"), QLatin1String("$(UNKNOWN_KEY)"));
    EXPECT_EQ(r.replace(" $(G_FILE)"), QLatin1String(" $(G_FILE)"));
    Replacer abs(QFileInfo("/tmp/d/f.tar.gz"));
    EXPECT_EQ(abs.replace("$(G_PATH)|$(G_DIR)"), QLatin1String("/tmp/d/f.tar.gz|/tmp/d"));
    auto upper = [](QString const &key) { return key == "K" ? QString("mapped") : QString(); };
    Replacer noFile;
    noFile.mapping = upper;
    EXPECT_EQ(noFile.replace("$(K)"), QLatin1String("mapped"));
    abs.mapping = upper;
    EXPECT_EQ(abs.replace("$(K)"), QLatin1String("$(K)"));
}

TEST(Replacer, OverriddenKeyMappingComesBeforeTheEnvironment) {
    struct Fixed : Replacer {
        QString map_key_to_val(QString const &key) override {
            return key == "HOME" ? QString("here") : QString();
        }
    } fixed;
    EXPECT_EQ(fixed.replace("$(HOME)"), QLatin1String("here"));
}

TEST(ReplaceVariables, KeepsUnknownKeysAndDropsHashKeys) {
    auto f = [](QString const &key) {
        return key == "a" ? QString("A") : key; // the key back means "unknown"
    };
    // clang-format off
    std::pair<char const *, char const *> const rows[] = {
        {"x$(a)y", "xAy"}, {"$(b)", "$(b)"}, {"[$(#note)]", "[]"}, {"$(a(b)", "$(ab)"},
        {"a$b", "a$b"}, {"x$(a", "x"}, {"$a(b)", "$a(b)"}};
    // clang-format on
    for (auto [in, out] : rows)
        EXPECT_EQ(replace_variables(QLatin1String(in), f), QLatin1String(out)) << in;
    EXPECT_EQ(replace_variables(QString(), f), QString());
    EXPECT_EQ(replace_variables("$(a)", nullptr), QLatin1String("$(a)"));
}

TEST(EnvVariables, FileInfoToEnvSetsTheFiveVariables) {
    fileInfo_to_env(QFileInfo("/tmp/dir/file.tar.gz"));
    EXPECT_EQ(replaceEnv("$(G_PATH)|$(G_DIR)|$(G_FILE)|$(G_SUFFIX)|$(G_BASE).bak"),
              QLatin1String("/tmp/dir/file.tar.gz|/tmp/dir|file.tar.gz|gz|file.bak"));
}

TEST(EnvVariables, CountHardwareThreadsCapsAtTheMachine) {
    unsigned int const cpu = static_cast<unsigned int>(QThread::idealThreadCount());
    EXPECT_EQ(count_hardware_threads(0), 1u);
    EXPECT_EQ(count_hardware_threads(1), 1u);
    EXPECT_EQ(count_hardware_threads(cpu), cpu);
    EXPECT_EQ(count_hardware_threads(cpu + 100), cpu);
}
