// duckdb-rows.mjs INPUT OUTPUT THREADS: the payment formula over the rows of `quote`, by DuckDB, written as CSV.
import { DuckDBInstance } from '@duckdb/node-api';

const [input, output, threads] = process.argv.slice(2);
const instance = await DuckDBInstance.create(':memory:', { threads });
const connection = await instance.connect();
await connection.run('SET preserve_insertion_order = true');
await connection.run(`
  COPY (
    WITH asked AS (
      SELECT CapitalCost AS cost, NumberOfPayments - AdvancedPayments AS n, 0.1 / CASE Quarterly WHEN 1 THEN 4 ELSE 12 END AS r,
             DepositValue + DepositPercent / 100 * CapitalCost AS deposit, ResidualPercent / 100 * CapitalCost AS residual,
             Maintenance AS maintenance
      FROM read_csv('${input}', header = true)),
    priced AS (
      SELECT *, round((cost * 1.03 - deposit - residual * pow(1 + r, -n)) * r / (1 - pow(1 + r, -n)), 4) + maintenance AS payment
      FROM asked)
    SELECT cost, deposit, residual, payment, round(payment * 1.2, 4) AS with_tax, cost - deposit AS net,
           round(deposit * 1.2, 4) AS deposit_with_tax, round(residual * 1.2, 4) AS residual_with_tax
    FROM priced
  ) TO '${output}' (FORMAT csv, HEADER)`);
