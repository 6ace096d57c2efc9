// node duckdb.mjs SQL: prints the rows of the answer as JSON; counts as numbers.

import { DuckDBInstance } from '@duckdb/node-api';

const instance = await DuckDBInstance.create(':memory:');
const connection = await instance.connect();
const answer = await connection.runAndReadAll(process.argv[2]);
const plain = (_, value) => (typeof value === 'bigint' ? Number(value) : value);
process.stdout.write(JSON.stringify(answer.getRowsJson(), plain));
