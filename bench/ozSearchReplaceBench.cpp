// Search and replace over a grid of 10^4 and 10^5 values (one row each, the grid's eight
// columns), through an ozGridCells over a table: Find next walking to the one match in the last
// cell, and Replace all rewriting the data cell of every row. Both should grow linearly with the
// number of values.
#include <benchmark/benchmark.h>

#include <string>

#include "tests/support/ozTableGridCells.h"
#include "ui/ozSearchReplace.h"

namespace {

ozTableGridCells Grid(long values)
{
    ozTableGridCells grid;
    grid.rows.resize(static_cast<std::size_t>(values));
    for (long index = 0; index < values; ++index) {
        ozTableGridCells::Row& row = grid.rows[static_cast<std::size_t>(index)];
        row[GridColumnCounter] = std::to_string(index + 1);
        row[GridColumnSubkey] = "Software\\Policies\\Bench\\Key " + std::to_string(index / 100);
        row[GridColumnValueName] = "Value " + std::to_string(index);
        row[GridColumnType] = "REG_SZ";
        row[GridColumnSize] = "24";
        row[GridColumnData] = "C:\\Program Files\\Bench";
    }
    return grid;
}

void FindNextToTheLastCell(benchmark::State& state)
{
    ozTableGridCells grid = Grid(state.range(0));
    grid.rows.back()[GridColumnDataOld] = "the one Match";
    ozSearchReplace search(grid);
    search.SearchText("match");
    for (auto _ : state) {
        search.Restart();
        if (!search.FindNext())
            state.SkipWithError("not found");
    }
    state.SetComplexityN(state.range(0));
}

void ReplaceAll(benchmark::State& state)
{
    ozTableGridCells grid = Grid(state.range(0));
    ozSearchReplace search(grid);
    // Back and forth, so that every round has every row to rewrite.
    bool forth = true;
    for (auto _ : state) {
        search.SearchText(forth ? "program files" : "Programs");
        search.ReplaceText(forth ? "Programs" : "Program Files");
        if (search.ReplaceAll() != state.range(0))
            state.SkipWithError("not every row replaced");
        forth = !forth;
    }
    state.SetComplexityN(state.range(0));
}

}  // namespace

BENCHMARK(FindNextToTheLastCell)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(ReplaceAll)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Complexity();
