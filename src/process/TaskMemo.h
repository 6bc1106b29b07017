#pragma once

#include "process/ApplicationLoad.h"
#include "process/DashboardTask.h"

#include <QHash>
#include <QString>

class TickTexts;

// Each load source's classified and assembled task, kept from one tick to the
// next and handed out again while everything the classification and the
// assembly read of the load is equal: the source's id and name, and of each
// member in order (the target too) its identity, parent, name, command,
// project, CPU and disk rates (bit for bit), resident bytes and duration text
// key, with the source's duration text key. Most sources of a desktop do not
// run between two ticks and cost one comparison. A source whose names and
// commands are equal but whose figures moved keeps its kind, which the
// keyword search would find again, and one whose members, parents and names
// are equal keeps its tree but the nodes of the members that moved. The
// texts must stay those of one locale and collator: `clear` when they change.
class TaskMemo {
public:
    struct Answer {
        const DashboardTask &task; // valid until the next call
        // The task that this id had on the last tick, which asked for each id
        // once, as this one does so far.
        bool kept = false;
    };
    // What `TaskClassification::classify` and `assembleTask` give for `load`.
    // The load is kept to compare with the next tick's.
    Answer task(ApplicationLoad load, TickTexts &texts);
    // Forgets the sources that this tick did not ask for.
    void endTick();
    void clear();

private:
    struct Entry {
        ApplicationLoad load;
        DashboardTask task;
        // The member of each node of the task's tree, depth first.
        std::vector<std::size_t> preorder;
        bool asked = false;
    };
    QHash<QString, Entry> m_entries;
    bool m_idRepeated = false; // on this tick (two sources whose ids collide)
    bool m_idRepeatedLastTick = false;
};
