// The jobs of actions_bench done by DuckDB and by Polars, for figures side by
// side with qmcsv's; each runs on every core, as those libraries do by
// default. Neither is a dependency of the build: install them into a folder of
// your own (`npm install @duckdb/node-api nodejs-polars` there) and pass it
// to `actions_bench --peers FOLDER`, which runs this script once per job:
//
//   node peers.mjs MODULES PEER JOB     (in the folder holding orders.csv)
//
// PEER is duckdb or polars; JOB one of actions_bench's (open_loop has no
// counterpart). Every cell is read as text, as qmcsv keeps it; the number
// sort orders by the Total column as a number, the text sort by Customer
// without case; the filters keep the rows whose Status contains "paid" and
// those whose City is Berlin or München, both without case; the chain does the
// text sort, the duplicates and the City filter in one job. The saved file is
// saved.csv. Exit status 3: the peer's package is not installed there.
import { createRequire } from 'node:module';
import path from 'node:path';

const [modules, peer, job] = process.argv.slice(2);
const require = createRequire(path.join(path.resolve(modules), 'package.json'));

async function load(name) {
  try {
    return require(name);
  } catch {
    process.exit(3);
  }
}

async function duckdb() {
  const { DuckDBInstance } = await load('@duckdb/node-api');
  const connection = await (await DuckDBInstance.create(':memory:')).connect();
  const source = "read_csv('orders.csv', delim=';', header=true, all_varchar=true, quote='\"')";
  const save = (select) => connection.run(`COPY (${select}) TO 'saved.csv' (DELIMITER ';', HEADER)`);
  switch (job) {
    case 'open_save': return save(`SELECT * FROM ${source}`);
    case 'open_sort_number_save': return save(`SELECT * FROM ${source} ORDER BY TRY_CAST(Total AS DOUBLE)`);
    case 'open_sort_text_nocase_save': return save(`SELECT * FROM ${source} ORDER BY lower(Customer)`);
    case 'open_remove_duplicates_save': return save(`SELECT DISTINCT * FROM ${source}`);
    case 'open_filter_text_save': return save(`SELECT * FROM ${source} WHERE contains(lower(Status), 'paid')`);
    case 'open_filter_regex_save':
      return save(`SELECT * FROM ${source} WHERE regexp_matches(City, '^(Berlin|München)$', 'i')`);
    case 'open_sort_dedupe_filter_save':
      return save(`SELECT DISTINCT * FROM ${source} WHERE regexp_matches(City, '^(Berlin|München)$', 'i')
                   ORDER BY lower(Customer)`);
    case 'open_info': return connection.run(`SELECT count(*) FROM ${source}`);
  }
  process.exit(2);
}

async function polars() {
  const pl = await load('nodejs-polars');
  const table = pl.readCSV('orders.csv', { sep: ';', hasHeader: true, inferSchemaLength: 0 });
  const save = (t) => t.writeCSV('saved.csv', { sep: ';' });
  switch (job) {
    case 'open_save': return save(table);
    case 'open_sort_number_save': return save(table.sort(pl.col('Total').cast(pl.Float64)));
    case 'open_sort_text_nocase_save': return save(table.sort(pl.col('Customer').str.toLowerCase()));
    case 'open_remove_duplicates_save': return save(table.unique({ maintainOrder: true }));
    case 'open_filter_text_save':
      return save(table.filter(pl.col('Status').str.toLowerCase().str.contains('paid')));
    case 'open_filter_regex_save': return save(table.filter(pl.col('City').str.contains('(?i)^(Berlin|München)$')));
    case 'open_sort_dedupe_filter_save':
      return save(table.sort(pl.col('Customer').str.toLowerCase()).unique({ maintainOrder: true })
        .filter(pl.col('City').str.contains('(?i)^(Berlin|München)$')));
    case 'open_info': return [table.height, table.width];
  }
  process.exit(2);
}

await (peer === 'duckdb' ? duckdb() : peer === 'polars' ? polars() : process.exit(2));
