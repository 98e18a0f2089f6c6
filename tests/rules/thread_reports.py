#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""tests/races.py tells reports of ours from those of libraries that are not built for the thread sanitizer."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))

import races  # noqa: E402

OURS = "    #0 corvane::Thing::write() ../../src/linux/thing.cpp:9 (corvane+0x10)\n    #1 main ../../src/main/main.cpp:1 (corvane+0x20)"
COPIED_BY_US = "    #0 memcpy <null> (libtsan.so.2+0x1)\n" + OURS
STANDARD = "    #0 std::deque<int>::push_back(int) /usr/include/c++/12/bits/stl_deque.h:9 (corvane+0x30)\n" + OURS
QT = "    #0 memmove <null> (libtsan.so.2+0x1)\n    #1 <null> <null> (libQt6Core.so.6+0x2)\n    #2 main ../../src/main/main.cpp:1 (corvane+0x20)"
QT_ALONE = "    #0 memmove <null> (libtsan.so.2+0x1)\n    #1 <null> <null> (libQt6Core.so.6+0x2)"
OTHER = "    #0 write <null> (libtsan.so.2+0x1)\n    #1 <null> <null> (libother.so.6+0x2)"
COUNTED = ("    #0 std::__atomic_base<int>::fetch_sub(int) /usr/include/c++/12/bits/atomic_base.h:628 (corvane+0x30)\n"
           "    #1 deref() /usr/include/x86_64-linux-gnu/qt6/QtCore/qbasicatomic.h:66 (corvane+0x30)\n" + OURS)
CALLED = OURS + "\n    #2 dl_iterate_phdr_cb <null> (libtsan.so.2+0x1)"
LINKER = "    #0 malloc <null> (libtsan.so.2+0x1)\n    #1 strdup string/strdup.c:42 (ld-linux-x86-64.so.2+0x2)"
QUEUED = OURS + "\n    #2 QtPrivate::FunctorCall<corvane::Thing>::call() /usr/include/x86_64-linux-gnu/qt6/QtCore/q.h:1 (corvane+0x30)"
MADE_BY_QT = ("    #0 operator new(unsigned long) tsan_new_delete.cpp:64 (libtsan.so.2+0x1)\n"
              "    #1 QMetaObject::invokeMethod() /usr/include/x86_64-linux-gnu/qt6/QtCore/qobjectdefs.h:3 (corvane+0x30)\n" + OURS)
MADE_BY_US = "    #0 operator new(unsigned long) tsan_new_delete.cpp:64 (libtsan.so.2+0x1)\n" + OURS
READ_FIRST = ("Read of size 8 at 0x1 by main thread:", "Previous write of size 8 at 0x1 by thread T2:")
FREED = "    #0 free <null> (libtsan.so.2+0x1)\n    #1 <null> <null> (libglib-2.0.so.0+0x2)"
FREED_BY_US = "    #0 operator delete(void*) <null> (libtsan.so.2+0x1)\n" + OURS
LOST = "    [failed to restore the stack]"


def race(first, second, kind="data race", heads=("Write of size 8 at 0x1 by thread T2:", "Previous read of size 8 at 0x1 by main thread:"),
         thread="worker", owner=None):
    location = f"  Location is heap block of size 9 at 0x1 allocated by thread T2:\n{owner}\n\n" if owner else ""
    return (f"WARNING: ThreadSanitizer: {kind} (pid=1)\n  {heads[0]}\n{first}\n\n  {heads[1]}\n{second}\n\n{location}"
            f"  Thread T2 '{thread}' (tid=3, running) created by main thread at:\n{OURS}\n\nSUMMARY: ThreadSanitizer: x\n")


ATOMIC = ("Write of size 8 at 0x1 by thread T2:", "Previous atomic write of size 4 at 0x1 by main thread:")
ORDER = ("Mutex M2 acquired here while holding mutex M1 in thread T2:", "Mutex M1 acquired here while holding mutex M2 in main thread:")
CASES = {
    "two accesses of ours": (race(OURS, OURS), True),
    "one access of ours": (race(QT, OURS), True),
    "one copy of ours": (race(QT, COPIED_BY_US), True),
    "one container of ours": (race(QT, STANDARD), True),
    "a stack that is lost": (race(QT, LOST), True),
    "a library that nobody looked at": (race(QT, OTHER), True),
    "a lost stack of memory of ours": (race(QT, LOST, owner=OURS), True),
    "a lost stack of a library's memory": (race(QT, LOST, owner=QT), False),
    "a lost stack of memory that a library frees": (race(FREED, LOST), False),
    "a lost stack of memory that ours frees": (race(FREED_BY_US, LOST), True),
    "an access of ours to memory that a library frees": (race(FREED, OURS), True),
    "an access of ours to a library's memory": (race(QT, OURS, owner=QT), True),
    "ours reads what the linker lends": (race(LINKER, CALLED), False),
    "ours reads the linker's memory without its lock": (race(LINKER, OURS), True),
    "ours writes what the linker lends": (race(CALLED, LINKER), True),
    "ours reads what another library wrote meanwhile": (race(QT, CALLED), True),
    "a queued call reads what Qt made for it": (race(QUEUED, MADE_BY_QT, heads=READ_FIRST), False),
    "a queued call reads what ours made": (race(QUEUED, MADE_BY_US, heads=READ_FIRST), True),
    "a queued call reads what ours wrote": (race(QUEUED, OURS, heads=READ_FIRST), True),
    "ours reads, without a call, what Qt made": (race(OURS, MADE_BY_QT, heads=READ_FIRST), True),
    "a library below ours": (race(QT, QT), False),
    "a count in Qt's headers": (race(QT, COUNTED, heads=ATOMIC), False),
    "a plain write in Qt's headers": (race(QT, COUNTED), True),
    "what a library's own thread hands over": (race(QT_ALONE, OURS, thread="QDBusConnection"), False),
    "ours on a library's own thread": (race(QT, OURS, thread="QDBusConnection"), True),
    "an order of locks with one of ours": (race(QT, OURS, "lock-order-inversion (potential deadlock)", ORDER), True),
    "an order of a library's locks": (race(QT, QT, "lock-order-inversion (potential deadlock)", ORDER), False),
    "another report of ours": (race(OURS, QT, "destroy of a locked mutex", ("", "and:")), True),
}


def main():
    wrong = [name for name, (text, ours) in CASES.items()
             if bool(races.sort([text])[0]) != ours or len(races.REPORT.findall(text)) != 1]
    name = "reports of races are told apart"
    print(f"FAIL {name}: {'; '.join(wrong)}" if wrong else f"PASS {name}")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
