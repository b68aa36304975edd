// SPDX-License-Identifier: Apache-2.0
// Album: pictures of what is on the screen, numbered in the order in which they were taken.
#pragma once

#include <QObject>
#include <QSet>
#include <QString>

namespace demo {

// Rule: where no window manager runs, nothing frames the windows; a strip with the window's title
//       is then drawn over each, so that a picture shows the titles too.
class Album : public QObject {
public:
    explicit Album(QString folder);

    // All visible windows, as they lie over one another.
    void Take(const QString& name);
    // From now on takes a picture of the window of that name as soon as it can be seen.
    void WatchFor(const QString& window, const QString& name);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    QString folder_;
    int taken_ = 0;
    QString watched_, watchedName_;
};

}  // namespace demo
