#include "ActionFailure.h"

#include "store/StoreError.h"

using namespace Qt::StringLiterals;

namespace tarvex::ActionFailure {

QString title()
{
    return u"Action Not Completed"_s;
}

QString text(const QString &action, const QString &reason)
{
    const QString what = action.isEmpty() ? u"The last action"_s : u"The action \""_s + action + u'"';
    return what + u" could not be completed.\n\n"_s + reason;
}

QString reason(const std::exception &fault)
{
    if (const auto *store = dynamic_cast<const StoreError *>(&fault)) {
        if (store->number() == StoreError::Locked)
            return u"The stud is in use by another program. Close it and try again."_s;
        return store->description() + u"\n\n(Error "_s + QString::number(store->number()) + u')';
    }
    if (dynamic_cast<const std::bad_alloc *>(&fault))
        return u"There is not enough memory. Close other programs and try again."_s;
    return QString::fromUtf8(fault.what());
}

QString reason(const std::exception_ptr &fault)
{
    try {
        std::rethrow_exception(fault);
    } catch (const std::exception &e) {
        return reason(e);
    } catch (...) {
        return u"An unexpected fault occurred."_s;
    }
}

} // namespace tarvex::ActionFailure
