#pragma once

#include "ui/Modal.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <map>

namespace tarvex::test {

/// Answers modal screens by their objectName while installed; a screen nobody expected
/// fails the test.
class ModalScript
{
public:
    using Handler = std::function<int(QDialog &)>;
    ModalScript()
    {
        Modal::setHook([this](QDialog &d) {
            ++shown[d.objectName()];
            const auto it = handlers.find(d.objectName());
            if (it == handlers.end()) {
                ADD_FAILURE() << "Unexpected screen " << d.objectName().toStdString();
                return int(QDialog::Rejected);
            }
            return it->second(d);
        });
    }
    ~ModalScript() { Modal::setHook({}); }
    void on(const QString &name, Handler h) { handlers[name] = std::move(h); }

    std::map<QString, Handler> handlers;
    std::map<QString, int> shown;
};

template <typename T> T *child(QWidget &parent, const char *name)
{
    T *w = parent.findChild<T *>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << "no control " << name;
    return w;
}

inline void type(QWidget &parent, const char *name, const QString &text)
{
    auto *edit = child<QLineEdit>(parent, name);
    edit->clear();
    QTest::keyClicks(edit, text);
}

inline void click(QWidget &parent, const char *name)
{
    QTest::mouseClick(child<QAbstractButton>(parent, name), Qt::LeftButton);
}

/// A button inside one panel, where panels hold buttons of the same name.
inline void click(QWidget &parent, const char *panel, const char *name)
{
    click(*child<QWidget>(parent, panel), name);
}

inline void pick(QWidget &parent, const char *name, const QString &text)
{
    auto *combo = child<QComboBox>(parent, name);
    const int index = combo->findText(text);
    ASSERT_GE(index, 0) << text.toStdString();
    combo->setCurrentIndex(index);
    Q_EMIT combo->activated(index);
}

} // namespace tarvex::test
