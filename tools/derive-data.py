#!/usr/bin/env python3
"""Derives the tables that the content builder reads from the published source files.

usage: derive-data.py SOURCES CONTENT/DATA

Reads the tables and outlines named in content/README.md, and state_names.csv, region_names.csv and
more_country_names.csv of the target folder, and the zone.tab of the time zone database; writes areas.csv,
world_cities.csv, series/*.csv and outlines/*.geojson there.
Run it again only when a source file changes; its results are kept with the program.
"""
import csv
import json
import re
import sys
from pathlib import Path

LANGUAGES = ("en", "fr", "es", "ar", "ru")
REGIONS = {"Africa": "AFR", "Americas": "AME", "Asia": "ASI", "Europe": "EUR", "Oceania": "OCE", "Antarctica": "ANT"}
# The outline table files these islands under the open ocean; the United Nations' list gives them a region.
OCEAN_ISLANDS = {"ATF": "AFR", "HMD": "OCE", "IOA": "OCE", "IOT": "AFR", "SGS": "AME"}
# Spellings of the five-yearly tables that the list of country names doesn't know.
SPELLINGS = {
    "Congo, Dem. Rep.": "COD", "South Korea": "KOR", "Congo, Rep.": "COG", "Micronesia, Fed. Sts.": "FSM",
    "St. Lucia": "LCA", "Hong Kong, China": "HKG", "Kyrgyz Republic": "KGZ", "North Korea": "PRK", "Laos": "LAO",
    "St. Vincent and the Grenadines": "VCT", "West Bank and Gaza": "PSE", "Macedonia, FYR": "MKD", "Lao": "LAO",
    "Slovak Republic": "SVK",
}
# Census areas of the labour statistics that were since renamed or merged and have no outline.
COUNTIES_WITHOUT_OUTLINE = {
    "02201": "Prince of Wales-Outer Ketchikan", "02232": "Skagway-Hoonah-Angoon", "02270": "Wade Hampton",
    "02280": "Wrangell-Petersburg", "46113": "Shannon", "51515": "Bedford (city)",
}
INCOME_GROUPS = {
    "<10000": "g01", "10000 to 14999": "g02", "15000 to 24999": "g03", "25000 to 34999": "g04", "35000 to 49999": "g05",
    "50000 to 74999": "g06", "75000 to 99999": "g07", "100000 to 149999": "g08", "150000 to 199999": "g09",
    "200000+": "g10",
}


def rows(path):
    with open(path, encoding="utf-8", newline="") as file:
        return list(csv.DictReader(file))


def features(path):
    with open(path, encoding="utf-8") as file:
        return json.load(file)["features"]


def number(value):
    """Shortest plain text of a computed value: six significant digits at most."""
    text = f"{value:.6g}"
    return text if "e" not in text else f"{value:.10f}".rstrip("0").rstrip(".")


class Areas:
    """The area table: every area once, in the order of its id."""

    def __init__(self, sources, target):
        self.target = target
        self.table = {}
        self.by_country = {}  # ISO code -> AreaID
        self.add_regions()
        self.add_countries(sources)
        self.add_states()
        self.add_counties(sources)

    def add(self, area_id, gid, map_file, names):
        self.table[area_id] = [area_id, gid, map_file, *names]

    def add_regions(self):
        for row in rows(self.target / "region_names.csv"):
            self.add(row["AreaID"], "-" + row["AreaID"], "World.shp", [row[code] for code in LANGUAGES])

    def add_countries(self, sources):
        names = {row["iso_a3"]: row for row in rows(sources / "country_names.csv")}
        names.update({row["code"]: row for row in rows(self.target / "more_country_names.csv")})
        for row in rows(sources / "ne_countries50.csv"):
            code = row["iso_a3"] or row["adm0_a3"]
            region = REGIONS.get(row["region_un"]) or OCEAN_ISLANDS[code]
            texts = [names[code][language] or names[code]["en"] for language in LANGUAGES]
            self.by_country[code] = region + code
            self.add(region + code, "-" + code, "World.shp", texts)

    def add_states(self):
        for row in rows(self.target / "state_names.csv"):
            parent = self.by_country[row["country"]]
            self.add(parent + row["code"], f"-{row['country']}-{row['code'].lstrip('0')}", f"{row['country']}_States.shp",
                     [row[code] for code in LANGUAGES])

    def add_counties(self, sources):
        counties = {f["properties"]["fips"]: f["properties"]["name"] for f in features(sources / "us_counties.geojson")}
        counties.update(COUNTIES_WITHOUT_OUTLINE)
        for fips, name in counties.items():
            map_file = "" if fips in COUNTIES_WITHOUT_OUTLINE else "USA_Counties.shp"
            self.add(us_area(fips), "C" + fips, map_file, [name, "", "", "", ""])

    def write(self):
        head = ["AreaID", "AreaGId", "MapFile", *(f"AreaName:{code}" for code in LANGUAGES)]
        write(self.target / "areas.csv", head, (self.table[key] for key in sorted(self.table)))


def us_area(fips):
    """AreaID of a state (2 digits) or county (5 digits) of the United States."""
    return "AMEUSA" + "0" + fips[:2] + fips[2:]


def write(path, head, lines):
    with open(path, "w", encoding="utf-8", newline="") as file:
        writer = csv.writer(file, lineterminator="\n")
        writer.writerow(head)
        writer.writerows(lines)


def derive_world_table(sources, target, areas):
    keys = [row["variable"] for row in rows(sources / "pwt91_variables.csv")]
    table, ratios = [], []
    for row in rows(sources / "pwt91.csv"):
        area, year = areas.by_country[row["isocode"]], row["year"]
        if row["pop"]:
            row["pop"] = str(round(float(row["pop"]) * 1e6))  # published in millions
        if any(row[key] for key in keys):
            table.append([area, year, *(row[key] for key in keys)])
        if ratio := ratios_of(row):
            ratios.append([area, year, *ratio])
    write(target / "series/pwt.csv", ["AreaID", "TimePeriod", *keys], table)
    write(target / "series/pwt_ratios.csv",
          ["AreaID", "TimePeriod", "gdp_person", "output_worker", "output_hour", "employment_rate"], ratios)


def ratios_of(row):
    """Output per person, per worker and per hour, and the employed share of the population; blanks where unknown."""
    def ratio(top, bottom, digits, factor):
        return str(round(float(row[top]) / float(row[bottom]) * factor, digits)) if row[top] and row[bottom] else ""

    per_worker = ratio("rgdpo", "emp", 1, 1)
    per_hour = str(round(float(per_worker) / float(row["avh"]), 2)) if per_worker and row["avh"] else ""
    values = [ratio("rgdpe", "pop", 1, 1e6), per_worker, per_hour, ratio("emp", "pop", 2, 1e8)]
    return values if any(values) else None


def derive_five_yearly(sources, target, areas):
    codes = dict(SPELLINGS)
    for row in rows(sources / "ne_countries50.csv"):
        code = row["iso_a3"] or row["adm0_a3"]
        codes.update({row["name"]: code, row["name_long"]: code})
    codes.update({row["en"]: row["iso_a3"] for row in rows(sources / "country_names.csv") if row["iso_a3"] in areas.by_country})
    codes.update({row["country"]: row["isocode"] for row in rows(sources / "pwt91.csv")})

    def area(name):
        return areas.by_country[codes[name]]

    write(target / "series/gapminder.csv", ["AreaID", "TimePeriod", "pop", "life_expectancy", "fertility"],
          ([area(r["country"]), r["year"], r["population"], r["life_expectancy"], r["fertility"]]
           for r in rows(sources / "gapminder.csv")))
    write(target / "series/gapminder_2015.csv", ["AreaID", "TimePeriod", "gdp_person", "life_expectancy", "pop"],
          ([area(r["country"]), "2015", r["income"], r["health"], r["population"]]
           for r in rows(sources / "gapminder_2015.csv")))


def derive_united_states(sources, target):
    facts = rows(sources / "us_state_facts.csv")
    percent = lambda text: number(float(text) * 100) if text else ""
    write(target / "series/us_population.csv", ["AreaID", "TimePeriod", "pop"],
          ([us_area(r["fips"]), "2016", r["population"]] for r in facts))
    write(target / "series/us_state_facts.csv", ["AreaID", "TimePeriod", "engineers", "obesity"],
          ([us_area(r["fips"]), "2016", percent(r["engineers_share"]), percent(r["obesity_rate"])] for r in facts))
    write(target / "series/us_hurricanes.csv", ["AreaID", "TimePeriod", "hurricanes"],
          ([us_area(r["fips"]), "1851-2004", r["hurricanes"]] for r in facts))
    write(target / "series/us_unemployment.csv", ["AreaID", "TimePeriod", "unemployment"],
          ([us_area(r["fips"]), "2009", percent(r["rate"])] for r in rows(sources / "us_county_unemployment_2009.csv")))
    derive_incomes(sources, target)


def derive_incomes(sources, target):
    states = {}
    for row in rows(sources / "us_state_income_2013.csv"):
        state = states.setdefault(row["fips"], {"households": row["households"]})
        group, share = INCOME_GROUPS[row["group"]], float(row["share"])
        state["share_" + group] = number(share * 100)
        state["number_" + group] = str(round(share * int(row["households"])))
    columns = ["households", *(f"{kind}_{group}" for kind in ("share", "number") for group in INCOME_GROUPS.values())]
    write(target / "series/us_incomes.csv", ["AreaID", "TimePeriod", *columns],
          ([us_area(fips), "2013", *(state[column] for column in columns)] for fips, state in states.items()))


def derive_outlines(sources, target, areas):
    states = {row["en"]: row for row in rows(target / "state_names.csv") if row["country"] != "USA"}
    codes = {r["adm0_a3"]: areas.by_country[r["iso_a3"] or r["adm0_a3"]] for r in rows(sources / "ne_countries50.csv")}
    world, counties = [], []
    by_country = {"USA": [], "BRA": [], "CAN": [], "AUS": []}
    for feature in features(sources / "ne_countries50.geojson"):
        world.append(outline(codes[feature["properties"]["adm0_a3"]], feature, areas))
    for feature in features(sources / "ne_states50.geojson"):
        row = states.get(feature["properties"]["name"])
        if row:
            by_country[row["country"]].append(outline(areas.by_country[row["country"]] + row["code"], feature, areas))
    for feature in features(sources / "us_states.geojson"):
        by_country["USA"].append(outline(us_area(feature["properties"]["fips"]), feature, areas))
    for feature in features(sources / "us_counties.geojson"):
        counties.append(outline(us_area(feature["properties"]["fips"]), feature, areas))
    layers = {"World": world, "USA_Counties": counties, **{f"{code}_States": list_ for code, list_ in by_country.items()}}
    for name, layer in layers.items():
        with open(target / f"outlines/{name}.geojson", "w", encoding="utf-8") as file:
            file.write('{"type":"FeatureCollection","features":[\n')
            file.write(",\n".join(json.dumps(f, separators=(",", ":"), ensure_ascii=False) for f in layer))
            file.write("\n]}\n")


def outline(area_id, feature, areas):
    name = areas.table[area_id][3]
    geometry = feature["geometry"]
    rings = [[without_repeats(ring) for ring in polygon] for polygon in geometry["coordinates"]]
    rings = [[ring for ring in polygon if len(ring) > 3] for polygon in rings]
    polygons = [polygon for polygon in rings if polygon] or [[box_around(geometry["coordinates"])]]
    return {"type": "Feature", "properties": {"ID_": area_id, "Name1_": name},
            "geometry": {"type": "MultiPolygon", "coordinates": polygons}}


def derive_cities(sources, target):
    """The places of the time zones, by country; those of territories without an outline are left out."""
    world = {row["iso_a2"]: row["iso_a3"] or row["adm0_a3"] for row in rows(sources / "ne_countries50.csv") if row["iso_a2"]}
    area_ids = {row["AreaID"][3:]: row["AreaID"] for row in rows(target / "areas.csv") if len(row["AreaID"]) == 6}
    cities = []
    with open(sources / "zone.tab", encoding="utf-8") as file:
        for line in file:
            if line.startswith("#"):
                continue
            country, place, zone = line.rstrip("\n").split("\t")[:3]
            if country in world:
                latitude, longitude = re.fullmatch(r"([+-]\d+)([+-]\d+)", place).groups()
                name = zone.rsplit("/", 1)[-1].replace("_", " ")
                cities.append([area_ids[world[country]], name, degrees(longitude, 3), degrees(latitude, 2)])
    write(target / "world_cities.csv", ["AreaID", "Name", "Longitude", "Latitude"], sorted(cities))


def degrees(text, whole):
    """Degrees of a sign, `whole` digits of degrees, two of minutes and perhaps two of seconds."""
    sign, digits = -1 if text[0] == "-" else 1, text[1:]
    minutes, seconds = digits[whole:whole + 2], digits[whole + 2:] or "0"
    return f"{sign * (int(digits[:whole]) + int(minutes) / 60 + int(seconds) / 3600):.4f}"


def box_around(polygons):
    """An outline for an area so small that the rounding of the source left a line of it (one city of Virginia)."""
    points = [point for polygon in polygons for ring in polygon for point in ring]
    west, east = min(x for x, _ in points), max(x for x, _ in points)
    south, north = min(y for _, y in points), max(y for _, y in points)
    return [[west, south], [west, north], [east, north], [east, south], [west, south]]


def without_repeats(ring):
    kept = [point for index, point in enumerate(ring) if index == 0 or point != ring[index - 1]]
    return kept if len({tuple(point) for point in kept}) > 2 else []


def main():
    sources, target = Path(sys.argv[1]), Path(sys.argv[2])
    areas = Areas(sources, target)
    areas.write()
    for folder in ("series", "outlines"):
        (target / folder).mkdir(exist_ok=True)
    derive_world_table(sources, target, areas)
    derive_five_yearly(sources, target, areas)
    derive_united_states(sources, target)
    derive_outlines(sources, target, areas)
    derive_cities(sources, target)


if __name__ == "__main__":
    main()
