// The main function of every test program.
//
// Beside Qt Test's own verdict, a run fails when
//   - a Qt message was printed that neither QTest::ignoreMessage announced nor the short list of
//   the
//     product's own trace lines holds,
//   - the hook of the program (SetEndCheck) finds something left over, an open host handle say.
#pragma once

#include <QApplication>
#include <QTest>

#include <functional>

namespace testing {

/// Runs the tests of an object and judges the messages. @return the program's exit status
int RunTests(QObject &tests, int argc, char **argv);

/// A check after the last test function. @param check answers what is wrong, empty when all is well
void SetEndCheck(std::function<QString()> check);

} // namespace testing

#define VN_TEST_MAIN(TestClass)                                                                    \
    int main(int argc, char **argv)                                                                \
    {                                                                                              \
        QApplication application(argc, argv);                                                      \
        TestClass tests;                                                                           \
        return testing::RunTests(tests, argc, argv);                                               \
    }
