// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LumaroRoom/Store/Store.h"

namespace lumaro {

/// A store whose transactions are in the hands of its owner: one at a time, never one within another.
class TransactionalStore : public Store {
public:
    virtual StoreResult<void> beginTransaction() = 0;
    /// What was written since the beginning is durable. After an error none of it is there, and the transaction is
    /// over.
    virtual StoreResult<void> commitTransaction() = 0;
    /// What was written since the beginning is undone. Without a transaction this does nothing.
    virtual void rollBack() = 0;
};

} // namespace lumaro
