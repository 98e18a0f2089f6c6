// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "forms/lists.h"

namespace corvane {

/// A list whose items say something to the pointer that rests on them.
class ItemTips {
public:
    std::function<std::string(int)>
        tipOf;  ///< of an item by its index; not tied, or empty: a text that is cut says itself

protected:
    ~ItemTips() = default;
};

class TippedListBox : public ListBox, public ItemTips {
public:
    using ListBox::ListBox;
};

class TippedFileBox : public FileBox, public ItemTips {
public:
    using FileBox::FileBox;
};

}  // namespace corvane
