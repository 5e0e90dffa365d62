// The main function of test programs that run a host: besides Qt Test's verdict and unexpected
// messages, a run fails when a host ended with something left open, a complaint nobody took, or a
// call of a slot that is not offered.
#pragma once

#include "suites/Host.h"
#include "testing/TestMain.h"

#include <QByteArrayList>

namespace testing {

/// To be called before the first test.
void CollectHostEnds();

/// Lines that the next host must end with, as Host::Account() or Complaints() word them, the former
/// behind "left open: ". One that does not come is a failure, too.
void ExpectAtEnd(const QByteArrayList &lines);

} // namespace testing

#define VN_HOST_TEST_MAIN(TestClass)                                                               \
    int main(int argc, char **argv)                                                                \
    {                                                                                              \
        QApplication application(argc, argv);                                                      \
        testing::CollectHostEnds();                                                                \
        TestClass tests;                                                                           \
        return testing::RunTests(tests, argc, argv);                                               \
    }
