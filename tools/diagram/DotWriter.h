// DotWriter.h — definitions drawn as a Graphviz DOT digraph: a DBD's segment
// hierarchy with the secondary indexes and logical relationships that tie it to
// other DBDs, a PSB's PCBs each over its DBD's hierarchy, or several of them in
// one picture. The model is read through its public interface only; the layout
// is left to Graphviz (no coordinates are written).
#pragma once

#include <krmwtarn/krmwtarn.h>
#include <krmwtarn/platform/common/Export.h>

#include <string>
#include <string_view>
#include <vector>

namespace krdiagram {

// The picture of `subjects` (DBDs, PSBs and PCBs, drawn in the order given;
// anything else is left out) as one DOT digraph, one statement a line.
//
// A DBD is a cluster of its segments, each node named DBD.SEGMENT and labelled
// with its name, sequence (key) field, length and field count, with an edge
// from each parent to each child. Every DBD at the other end of one of its
// logical relationships, logical-DBD sources or (primary or secondary)
// indexes is drawn as well, in a cluster of its own, and those ties are edges
// between the segments of the drawn DBDs. A PSB is one cluster per PCB: a node
// for the PCB (named PSB/N, N counting from 1, with its type and processing
// options) over the hierarchy of the DBD it is based on, each segment named
// PSB/N/DBD.SEGMENT, sensitive segments filled and labelled with their
// processing options and sensitive fields, the others greyed; a TP or GSAM PCB
// is its node alone. With several subjects the DBDs the PCBs are based on are
// drawn too, and each PCB is joined to its DBD (and to its processing
// sequence's index DBD). A name that would repeat another node's gets ~2, ~3...
//
// Every node and edge carries a `class` attribute saying what it stands for:
// nodes segment, sensitive, insensitive, pcb, senseg (a SENSEG that maps no
// segment of the PCB's DBD); edges parent, lchild, pair, xdfld, indexsource,
// primaryindex, source, pcbroot, sensegparent, dbd, procseq. The same model
// gives the same text, byte for byte.
KRMWTARN_API std::string writeDot(const std::vector<_ADObject*>& subjects);

// TEXT as a DOT quoted string: quotes and backslashes escaped, control
// characters and bytes that are not UTF-8 replaced, so any name is a valid ID.
KRMWTARN_API std::string quoted(std::string_view text);

}  // namespace krdiagram
