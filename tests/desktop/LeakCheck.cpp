#include <QCoreApplication>

#include <sanitizer/lsan_interface.h>
#include <sys/time.h>

// Looks for leaks while the application object goes, when all that is the program's own is gone.
// At the end of the process it may be too late: the thread of the accessibility bridge's bus, which
// Qt ends only then, has now and then lost its data between the two that let go of it.
static void CheckLeaksBeforeStatics() {
    qAddPostRoutine([] {
        // The limit on the program's end would cut the check short on a busy computer.
        const itimerval none = {};
        itimerval left = {};
        setitimer(ITIMER_REAL, &none, &left);
        __lsan_do_leak_check();
        setitimer(ITIMER_REAL, &left, nullptr);
    });
}
Q_COREAPP_STARTUP_FUNCTION(CheckLeaksBeforeStatics)
