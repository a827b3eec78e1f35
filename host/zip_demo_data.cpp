#include "host/zip_demo_data.h"

#include <QStringList>

#include "host/host_gic.h"
#include "platform/db/recordset.h"
#include "platform/db/sql_text.h"

namespace orvo::host {
namespace {

// Rows per INSERT: both engines take a list of rows in one statement.
constexpr int kRowsPerInsert = 250;

// One state's places, "City:zips;City:zips", the zips separated by commas, a run of
// consecutive zips written "first-last". Post office names, the form in which addresses
// carry them.
struct StatePlaces {
    const char* state;
    const char* places;
};

const StatePlaces kPlaces[] = {
    {"AK",
     "Anchorage:99501-99504,99507,99508,99515-99518;Fairbanks:99701,99709,99712;"
     "Juneau:99801;Ketchikan:99901;Sitka:99835;Wasilla:99654;Palmer:99645;Kodiak:99615;"
     "Bethel:99559;Kenai:99611;Soldotna:99669;Homer:99603;Nome:99762;Valdez:99686;"
     "Seward:99664"},
    {"AL",
     "Birmingham:35203-35214;Montgomery:36104-36111,36116,36117;Mobile:36602-36612,36617;"
     "Huntsville:35801-35803,35805,35806,35810,35811,35816,35824;"
     "Tuscaloosa:35401,35404-35406;Auburn:36830,36832;Dothan:36301,36303,36305;"
     "Decatur:35601,35603;Florence:35630,35633;Gadsden:35901,35903,35904;"
     "Opelika:36801,36804;Anniston:36201,36206,36207;Prattville:36066,36067;"
     "Enterprise:36330;Selma:36701,36703"},
    {"AR",
     "Little Rock:72201,72202,72204-72207,72209-72212,72223,72227;"
     "North Little Rock:72114,72116-72118;Fayetteville:72701,72703,72704;"
     "Fort Smith:72901,72903,72904,72908,72916;Springdale:72762,72764;Rogers:72756,72758;"
     "Bentonville:72712;Jonesboro:72401,72404;Conway:72032,72034;Pine Bluff:71601-71603;"
     "Hot Springs:71901,71913;Hot Springs Village:71909;Texarkana:71854;"
     "Russellville:72801,72802;Searcy:72143"},
    {"AZ",
     "Phoenix:85003,85004,85006-85009,85012-85017;"
     "Tucson:85701,85704-85706,85710-85716,85718;Mesa:85201-85210,85212,85213;"
     "Chandler:85224-85226,85248,85249,85286;Gilbert:85233,85234,85295-85298;"
     "Glendale:85301-85306,85308,85310;"
     "Scottsdale:85250,85251,85254,85255,85257-85260,85262,85266;Tempe:85281-85284;"
     "Peoria:85345,85381-85383;Surprise:85374,85378,85379,85387,85388;"
     "Flagstaff:86001,86004;Yuma:85364,85365,85367;Prescott:86301,86303,86305;"
     "Prescott Valley:86314;Sedona:86336"},
    {"CA",
     "Los Angeles:90001-90008,90010-90013;San Diego:92101-92111,92113;"
     "San Jose:95110-95113,95116-95123;San Francisco:94102-94105,94107-94112,94114,94115;"
     "Sacramento:95811,95814-95824;Fresno:93701-93706,93710,93711,93720-93722,93725;"
     "Oakland:94601-94603,94605-94607,94609-94612,94618,94619;"
     "Long Beach:90802-90808,90810,90813-90815;Bakersfield:93301,93304-93309,93311-93314;"
     "Anaheim:92801,92802,92804-92808;Santa Ana:92701,92703-92707;"
     "Riverside:92501,92503-92508;Stockton:95202-95207,95209,95210,95212,95219;"
     "Irvine:92602-92604,92606,92612,92614,92617,92618,92620;"
     "Chula Vista:91910,91911,91913-91915"},
    {"CO",
     "Denver:80202-80207,80209-80212,80216,80218;"
     "Colorado Springs:80903-80907,80909-80911,80915-80918;Aurora:80010-80019;"
     "Fort Collins:80521,80524-80526,80528;Lakewood:80214,80215,80226-80228,80232;"
     "Thornton:80229,80233,80241;Arvada:80002-80005,80007;"
     "Westminster:80020,80021,80030,80031,80234;Pueblo:81001,81003-81008;"
     "Boulder:80301-80305;Greeley:80631,80634;Longmont:80501,80503,80504;"
     "Loveland:80537,80538;Broomfield:80020,80023;Grand Junction:81501,81503-81507"},
    {"CT",
     "Hartford:06103,06105,06106,06112,06114,06120;"
     "New Haven:06510,06511,06513,06515,06519;Bridgeport:06604-06608,06610;"
     "Stamford:06901-06903,06905-06907;Waterbury:06702,06704-06706,06708,06710;"
     "Norwalk:06850,06851,06853-06855;Danbury:06810,06811;New Britain:06051-06053;"
     "West Hartford:06107,06110,06117,06119;Greenwich:06830,06831;"
     "Hamden:06514,06517,06518;Meriden:06450,06451;Bristol:06010;Manchester:06040,06042;"
     "West Haven:06516"},
    {"DC", "Washington:20001-20012"},
    {"DE",
     "Wilmington:19801-19810;Dover:19901,19904;Newark:19702,19711,19713;Middletown:19709;"
     "Smyrna:19977;Milford:19963;Seaford:19973;Georgetown:19947;Lewes:19958;"
     "Rehoboth Beach:19971;Bear:19701;New Castle:19720;Claymont:19703;Hockessin:19707;"
     "Laurel:19956"},
    {"FL",
     "Jacksonville:32202,32204-32212,32216,32217;Miami:33125-33136;"
     "Miami Beach:33139-33141;Tampa:33602-33607,33609-33614;"
     "Orlando:32801,32803-32812,32814;"
     "Saint Petersburg:33701-33705,33707,33710-33714,33716;"
     "Hialeah:33010,33012-33016,33018;Tallahassee:32301,32303-32305,32308-32312,32317;"
     "Fort Lauderdale:33301,33304-33306,33308,33309,33311,33312,33315,33316;"
     "Port Saint Lucie:34952,34953,34983,34984,34986,34987;"
     "Cape Coral:33904,33909,33914,33990,33991,33993;Pembroke Pines:33024,33026-33029;"
     "Miramar:33023,33025,33027;Hollywood:33019-33021,33023;"
     "Gainesville:32601,32603,32605-32609,32641,32653"},
    {"GA",
     "Atlanta:30303,30305-30315;Augusta:30901,30904,30906,30907,30909;"
     "Columbus:31901,31903,31904,31906,31907,31909;"
     "Macon:31201,31204,31206,31210,31211,31216,31217,31220;"
     "Savannah:31401,31404-31407,31410,31411,31419;Athens:30601,30605-30607;"
     "Roswell:30075,30076;Albany:31701,31705,31707,31721;Warner Robins:31088,31093;"
     "Alpharetta:30004,30005,30009,30022;Marietta:30060,30062,30064,30066-30068;"
     "Valdosta:31601,31602,31605;Smyrna:30080,30082;Peachtree City:30269;"
     "Newnan:30263,30265"},
    {"HI",
     "Honolulu:96813-96819,96821,96822,96825,96826;Hilo:96720;Kailua:96734;Kaneohe:96744;"
     "Pearl City:96782;Waipahu:96797;Ewa Beach:96706;Kapolei:96707;Mililani:96789;"
     "Aiea:96701;Wahiawa:96786;Waianae:96792;Haleiwa:96712;Kahului:96732;Wailuku:96793"},
    {"IA",
     "Des Moines:50309-50317,50320,50321;Cedar Rapids:52401-52405;"
     "Davenport:52802-52804,52806,52807;Sioux City:51101,51103-51106,51108;"
     "Iowa City:52240,52245,52246;Waterloo:50701-50703;Ames:50010,50014;"
     "West Des Moines:50265,50266;Council Bluffs:51501,51503;Ankeny:50021,50023;"
     "Dubuque:52001-52003;Urbandale:50322,50323;Cedar Falls:50613;Marion:52302;"
     "Bettendorf:52722"},
    {"ID",
     "Boise:83702-83706,83709,83712-83714,83716;Meridian:83642,83646;"
     "Nampa:83651,83686,83687;Idaho Falls:83401,83402,83404,83406;"
     "Pocatello:83201,83202,83204;Caldwell:83605,83607;Coeur d'Alene:83814,83815;"
     "Twin Falls:83301;Post Falls:83854;Lewiston:83501;Rexburg:83440;Eagle:83616;"
     "Kuna:83634;Moscow:83843;Mountain Home:83647"},
    {"IL",
     "Chicago:60601-60612;Springfield:62701-62704,62707,62711,62712;Aurora:60502-60506;"
     "Rockford:61101-61104,61107-61109,61114;Joliet:60431-60433,60435,60436;"
     "Naperville:60540,60563-60565;Peoria:61602-61606,61614,61615;Elgin:60120,60123,60124;"
     "Waukegan:60085,60087;Champaign:61820-61822;Bloomington:61701,61704,61705;"
     "Decatur:62521,62522,62526;Evanston:60201-60203;Schaumburg:60173,60193-60195;"
     "Bolingbrook:60440,60490"},
    {"IN",
     "Indianapolis:46201-46205,46208,46214,46216-46220;"
     "Fort Wayne:46802-46809,46814-46816,46818;Evansville:47708,47710-47715,47720,47725;"
     "South Bend:46601,46613-46617,46619,46628,46635,46637;Carmel:46032,46033;"
     "Fishers:46037,46038;Bloomington:47401,47403,47404,47408;"
     "Hammond:46320,46323,46324,46327;Gary:46402-46404,46406-46409;"
     "Lafayette:47901,47904,47905,47909;Muncie:47302-47305;Terre Haute:47802-47805,47807;"
     "Kokomo:46901,46902;Noblesville:46060,46062;Anderson:46011-46013,46016,46017"},
    {"KS",
     "Wichita:67202-67213;Overland Park:66204,66207,66210,66212,66213,66221,66223;"
     "Kansas City:66101-66106,66109,66111,66112;Olathe:66061,66062;"
     "Topeka:66603-66611,66614,66617,66618;Lawrence:66044,66046,66047,66049;"
     "Shawnee:66203,66216-66218,66226;Manhattan:66502,66503;Lenexa:66215,66219,66220;"
     "Salina:67401;Hutchinson:67501,67502;Leavenworth:66048;"
     "Leawood:66206,66209,66211,66224;Dodge City:67801;Garden City:67846"},
    {"KY",
     "Louisville:40202-40213;Lexington:40502-40505,40507-40511,40513-40515;"
     "Bowling Green:42101,42103,42104;Owensboro:42301,42303;Covington:41011,41014,41015;"
     "Richmond:40475;Georgetown:40324;Florence:41042;Hopkinsville:42240;"
     "Nicholasville:40356;Elizabethtown:42701;Henderson:42420;Frankfort:40601;"
     "Independence:41051;Paducah:42001,42003"},
    {"LA",
     "New Orleans:70112-70119,70122,70124-70126;"
     "Baton Rouge:70801,70802,70805,70806,70808-70812,70814-70816;"
     "Shreveport:71101,71103-71109,71115,71118,71119,71129;"
     "Lafayette:70501,70503,70506-70508;Lake Charles:70601,70605,70607,70611,70615;"
     "Kenner:70062,70065;Bossier City:71111,71112;Monroe:71201-71203;"
     "Alexandria:71301-71303;Houma:70360,70363,70364;Metairie:70001-70003,70005,70006;"
     "Marrero:70072;Harvey:70058;Gretna:70053,70056;Chalmette:70043"},
    {"MA",
     "Boston:02108-02111,02113-02116,02118-02121;Charlestown:02129;Jamaica Plain:02130;"
     "Roslindale:02131;West Roxbury:02132;Allston:02134;Brighton:02135;Hyde Park:02136;"
     "Worcester:01602-01610;Springfield:01103-01105,01107-01109,01118,01119,01128,01129;"
     "Cambridge:02138-02142;Lowell:01850-01852,01854;Brockton:02301,02302;"
     "New Bedford:02740,02744-02746;Quincy:02169-02171"},
    {"MD",
     "Baltimore:21201,21202,21205-21214;Frederick:21701-21704;Rockville:20850-20853;"
     "Gaithersburg:20877-20879,20882;Bowie:20715,20716,20720,20721;Hagerstown:21740,21742;"
     "Annapolis:21401,21403,21409;Silver Spring:20901-20906,20910;"
     "Bethesda:20814,20816,20817;Columbia:21044-21046;Germantown:20874,20876;"
     "Waldorf:20601-20603;Glen Burnie:21060,21061;Ellicott City:21042,21043;"
     "Towson:21204,21286"},
    {"ME",
     "Portland:04101-04103;Lewiston:04240;Bangor:04401;South Portland:04106;Auburn:04210;"
     "Biddeford:04005;Sanford:04073;Saco:04072;Augusta:04330;Westbrook:04092;"
     "Waterville:04901;Brunswick:04011;Scarborough:04074;Gorham:04038;Windham:04062"},
    {"MI",
     "Detroit:48201-48212;Grand Rapids:49503-49508,49512,49525,49534,49544,49546,49548;"
     "Warren:48088,48089,48091-48093;Sterling Heights:48310,48312-48314;"
     "Ann Arbor:48103-48105,48108,48109;Lansing:48906,48910-48912,48915,48917,48933;"
     "Flint:48502-48507,48532;Dearborn:48120,48124,48126,48128;Livonia:48150,48152,48154;"
     "Troy:48083-48085,48098;Westland:48185,48186;Farmington Hills:48331,48334-48336;"
     "Kalamazoo:49001,49004,49006-49009,49048;Wyoming:49509,49519;"
     "Southfield:48033,48034,48075,48076"},
    {"MN",
     "Minneapolis:55401-55412;Saint Paul:55101-55108,55116,55117,55119,55130;"
     "Rochester:55901,55902,55904,55906;Duluth:55802-55808,55810-55812;"
     "Bloomington:55420,55425,55431,55437,55438;Brooklyn Park:55428,55443-55445;"
     "Plymouth:55441,55446,55447;Maple Grove:55311,55369;Woodbury:55125,55129;"
     "Saint Cloud:56301,56303,56304;Eagan:55121-55123;Eden Prairie:55344,55346,55347;"
     "Coon Rapids:55433,55448;Burnsville:55306,55337;Blaine:55434,55449"},
    {"MO",
     "Kansas City:64105,64106,64108-64114,64116-64118;Saint Louis:63101-63104,63106-63113;"
     "Springfield:65802-65804,65806,65807,65809,65810;Columbia:65201-65203;"
     "Independence:64050,64052,64053,64055-64057;"
     "Lees Summit:64063,64064,64081,64082,64086;O'Fallon:63366,63368;"
     "Saint Joseph:64501,64503-64506;Saint Charles:63301,63303,63304;Saint Peters:63376;"
     "Blue Springs:64014,64015;Florissant:63031,63033,63034;Joplin:64801,64804;"
     "Chesterfield:63005,63017;Jefferson City:65101,65109"},
    {"MS",
     "Jackson:39201-39204,39206,39209,39211-39213,39216;Gulfport:39501,39503,39507;"
     "Southaven:38671,38672;Hattiesburg:39401,39402;Biloxi:39530-39532;"
     "Meridian:39301,39305,39307;Tupelo:38801,38804;Olive Branch:38654;Horn Lake:38637;"
     "Clinton:39056;Pearl:39208;Madison:39110;Ridgeland:39157;Brandon:39042,39047;"
     "Starkville:39759"},
    {"MT",
     "Billings:59101,59102,59105,59106;Missoula:59801-59804,59808;"
     "Great Falls:59401,59404,59405;Bozeman:59715,59718;Butte:59701;Helena:59601,59602;"
     "Kalispell:59901;Havre:59501;Anaconda:59711;Miles City:59301;Belgrade:59714;"
     "Livingston:59047;Laurel:59044;Whitefish:59937;Lewistown:59457"},
    {"NC",
     "Charlotte:28202-28213;Raleigh:27601,27603-27610,27612-27614;"
     "Greensboro:27401,27403,27405-27410,27455;Durham:27701,27703-27705,27707,27712,27713;"
     "Winston Salem:27101,27103-27107,27127;Fayetteville:28301,28303-28306,28311,28314;"
     "Cary:27511,27513,27518,27519;Wilmington:28401,28403,28405,28409,28411,28412;"
     "High Point:27260,27262,27265;Concord:28025,28027;Asheville:28801,28803-28806;"
     "Greenville:27834,27858;Gastonia:28052,28054,28056;Jacksonville:28540,28546;"
     "Chapel Hill:27514,27516,27517"},
    {"ND",
     "Fargo:58102-58104;Bismarck:58501,58503,58504;Grand Forks:58201,58203;"
     "Minot:58701,58703;West Fargo:58078;Williston:58801;Dickinson:58601;Mandan:58554;"
     "Jamestown:58401;Wahpeton:58075;Devils Lake:58301;Valley City:58072;Grafton:58237;"
     "Watford City:58854;Beulah:58523"},
    {"NE",
     "Omaha:68102,68104-68108,68110-68112,68114,68116,68117;"
     "Lincoln:68502-68508,68510,68512,68516,68520,68521;Bellevue:68005,68123,68147;"
     "Grand Island:68801,68803;Kearney:68845,68847;Fremont:68025;Hastings:68901;"
     "Norfolk:68701;North Platte:69101;Columbus:68601;Papillion:68046,68133;"
     "La Vista:68128;Scottsbluff:69361;South Sioux City:68776;Beatrice:68310"},
    {"NH",
     "Manchester:03101-03104,03109;Nashua:03060,03062-03064;Concord:03301,03303;"
     "Dover:03820;Rochester:03867,03868;Keene:03431;Derry:03038;Portsmouth:03801;"
     "Salem:03079;Merrimack:03054;Londonderry:03053;Hudson:03051;Laconia:03246;"
     "Lebanon:03766;Hanover:03755"},
    {"NJ",
     "Newark:07102-07108,07112,07114;Jersey City:07302,07304-07307,07310;"
     "Paterson:07501-07505,07513,07514,07522,07524;Elizabeth:07201,07202,07206,07208;"
     "Trenton:08608-08611,08618,08619,08629,08638;Camden:08102-08105;Clifton:07011-07014;"
     "Passaic:07055;Union City:07087;Bayonne:07002;East Orange:07017,07018;"
     "Vineland:08360,08361;New Brunswick:08901;Hoboken:07030;Perth Amboy:08861"},
    {"NM",
     "Albuquerque:87102,87104-87114;Las Cruces:88001,88005,88007,88011,88012;"
     "Rio Rancho:87124,87144;Santa Fe:87501,87505,87507,87508;Roswell:88201,88203;"
     "Farmington:87401,87402;Clovis:88101;Hobbs:88240,88242;Alamogordo:88310;"
     "Carlsbad:88220;Gallup:87301;Deming:88030;Los Lunas:87031;Chaparral:88081;"
     "Sunland Park:88063"},
    {"NV",
     "Las Vegas:89101-89104,89106-89110,89113,89115,89117;"
     "Henderson:89002,89011,89012,89014,89015,89044,89052,89074;"
     "Reno:89501-89503,89506,89509,89511,89512,89519,89521,89523;"
     "North Las Vegas:89030-89032,89081,89084,89086;Sparks:89431,89434,89436,89441;"
     "Carson City:89701,89703,89705,89706;Elko:89801;Mesquite:89027;Boulder City:89005;"
     "Fernley:89408;Fallon:89406;Pahrump:89048,89060,89061;Winnemucca:89445;Minden:89423;"
     "Gardnerville:89410"},
    {"NY",
     "New York:10001-10007,10009-10013;Bronx:10451-10462;Brooklyn:11201,11203-11213;"
     "Staten Island:10301-10310,10312,10314;Astoria:11102,11103,11105,11106;"
     "Long Island City:11101,11109;Flushing:11354,11355,11358;Jamaica:11432-11436;"
     "Forest Hills:11375;Rego Park:11374;Elmhurst:11373;Jackson Heights:11372;"
     "Corona:11368;Woodside:11377;Sunnyside:11104"},
    {"OH",
     "Columbus:43201-43207,43209-43213;Cleveland:44102-44106,44108-44111,44113-44115;"
     "Cincinnati:45202-45209,45211-45214;Toledo:43604-43615;Akron:44301-44308,44310-44313;"
     "Dayton:45402-45406,45408-45410,45414-45417;Parma:44129,44134;"
     "Canton:44702-44710,44714,44718;Youngstown:44502-44507,44509-44512,44514,44515;"
     "Lorain:44052,44053,44055;Hamilton:45011,45013,45015;Springfield:45502-45506;"
     "Elyria:44035;Lakewood:44107;Cuyahoga Falls:44221,44223"},
    {"OK",
     "Oklahoma City:73102-73112,73114;Tulsa:74103-74108,74110,74112,74114-74116,74119;"
     "Norman:73019,73026,73069,73071,73072;Broken Arrow:74011,74012,74014;"
     "Lawton:73501,73505,73507;Edmond:73003,73012,73013,73025,73034;Moore:73160;"
     "Enid:73701,73703;Stillwater:74074,74075;Muskogee:74401,74403;"
     "Bartlesville:74003,74006;Owasso:74055;Shawnee:74801,74804;Yukon:73099;Ardmore:73401"},
    {"OR",
     "Portland:97201-97206,97209-97214;Salem:97301-97306,97317;Eugene:97401-97405,97408;"
     "Gresham:97030,97080;Hillsboro:97123,97124;Beaverton:97003,97005-97008;"
     "Bend:97701-97703;Medford:97501,97504;Springfield:97477,97478;"
     "Corvallis:97330,97331,97333;Albany:97321,97322;Tigard:97223,97224;"
     "Lake Oswego:97034,97035;Grants Pass:97526,97527;Oregon City:97045"},
    {"PA",
     "Philadelphia:19102-19104,19106,19107,19111,19114-19116,19118-19120;"
     "Pittsburgh:15201-15212;Allentown:18101-18104,18109;Erie:16501-16511;"
     "Reading:19601,19602,19604-19611;Scranton:18503-18505,18508-18510;"
     "Bethlehem:18015,18017,18018,18020;Lancaster:17601-17603;"
     "Harrisburg:17101-17104,17109-17112;Altoona:16601,16602;York:17401-17404,17406,17408;"
     "State College:16801,16803;Wilkes Barre:18701,18702,18705,18706;Chester:19013;"
     "Easton:18040,18042,18045;Springfield:19064"},
    {"RI",
     "Providence:02903-02909;Warwick:02886,02888,02889;Cranston:02910,02920,02921;"
     "Pawtucket:02860,02861;East Providence:02914-02916;Woonsocket:02895;Coventry:02816;"
     "Cumberland:02864;North Providence:02911;Wakefield:02879;West Warwick:02893;"
     "Johnston:02919;North Kingstown:02852;Newport:02840;Bristol:02809"},
    {"SC",
     "Columbia:29201,29203-29206,29209,29210,29212,29223,29229;"
     "Charleston:29401,29403,29407,29412,29414,29492;"
     "North Charleston:29405,29406,29418,29420;Mount Pleasant:29464,29466;"
     "Rock Hill:29730,29732;Greenville:29601,29605,29607,29609,29611,29615,29617;"
     "Summerville:29483,29485;Sumter:29150,29153,29154;Goose Creek:29445;"
     "Hilton Head Island:29926,29928;Florence:29501,29505,29506;"
     "Spartanburg:29301-29303,29306,29307;Myrtle Beach:29572,29575,29577,29579,29588;"
     "Aiken:29801,29803;Anderson:29621,29624-29626"},
    {"SD",
     "Sioux Falls:57103-57108,57110;Rapid City:57701-57703;Aberdeen:57401;Brookings:57006;"
     "Watertown:57201;Mitchell:57301;Yankton:57078;Pierre:57501;Huron:57350;"
     "Spearfish:57783;Vermillion:57069;Brandon:57005;Box Elder:57719;Sturgis:57785;"
     "Madison:57042"},
    {"TN",
     "Memphis:38103-38109,38111,38112,38114-38116;Germantown:38138,38139;"
     "Nashville:37201,37203-37213;Knoxville:37902,37909,37912,37914-37922;"
     "Chattanooga:37402-37412,37415;Clarksville:37040,37042,37043;"
     "Murfreesboro:37127-37130;Franklin:37064,37067,37069;Jackson:38301,38305;"
     "Johnson City:37601,37604,37615;Hendersonville:37075;Kingsport:37660,37663-37665;"
     "Collierville:38017;Smyrna:37167;Cleveland:37311,37312,37323;Springfield:37172"},
    {"TX",
     "Houston:77002-77013;Dallas:75201-75212;San Antonio:78201-78205,78207-78213;"
     "Austin:78701-78705,78712,78717,78719,78721-78724;Fort Worth:76102-76112,76114;"
     "El Paso:79901-79905,79907,79912,79915,79922,79924,79925,79927;"
     "Arlington:76001,76002,76006,76010-76018;Corpus Christi:78401,78404-78414;"
     "Plano:75023-75025,75074,75075,75093,75094;Laredo:78040,78041,78043,78045,78046;"
     "Lubbock:79401,79403,79404,79407,79410-79416,79423;Irving:75038,75039,75060-75063;"
     "Garland:75040-75044;Frisco:75033-75035;McKinney:75069-75072"},
    {"UT",
     "Salt Lake City:84101-84106,84108,84109,84111,84115-84117;"
     "West Valley City:84119,84120,84128;Provo:84601,84604,84606;"
     "West Jordan:84081,84084,84088;Orem:84057,84058,84097;Sandy:84070,84092-84094;"
     "Ogden:84401,84403-84405;Saint George:84770,84790;Layton:84040,84041;"
     "South Jordan:84009,84095;Lehi:84043;Logan:84321;Murray:84107,84123;Draper:84020;"
     "Bountiful:84010"},
    {"VA",
     "Virginia Beach:23451-23457,23459-23462,23464;"
     "Norfolk:23502-23505,23507-23511,23513,23517,23518;Chesapeake:23320-23325;"
     "Richmond:23219-23230;Newport News:23601-23603,23605-23608;Alexandria:22301-22312;"
     "Hampton:23661,23663,23664,23666,23669;Roanoke:24011-24019;"
     "Portsmouth:23701-23704,23707;Suffolk:23432-23438;Lynchburg:24501-24504;"
     "Harrisonburg:22801,22802;Leesburg:20175,20176;Charlottesville:22901-22903,22911;"
     "Blacksburg:24060;Springfield:22150-22153"},
    {"VT",
     "Burlington:05401,05408;South Burlington:05403;Rutland:05701;Essex Junction:05452;"
     "Barre:05641;Montpelier:05602;Winooski:05404;Saint Albans:05478;Newport:05855;"
     "Vergennes:05491;Middlebury:05753;Bennington:05201;Brattleboro:05301;"
     "Springfield:05156;Saint Johnsbury:05819"},
    {"WA",
     "Seattle:98101-98109,98112,98115,98116;"
     "Spokane:99201-99205,99207,99208,99212,99216-99218,99223;"
     "Tacoma:98402-98409,98418,98422,98443,98444;Vancouver:98660-98665,98682-98686;"
     "Bellevue:98004-98008;Kent:98030-98032,98042;Everett:98201,98203,98204,98208;"
     "Renton:98055-98059;Federal Way:98003,98023;Yakima:98901-98903,98908;"
     "Kirkland:98033,98034;Bellingham:98225,98226,98229;Auburn:98001,98002,98092;"
     "Kennewick:99336-99338;Pasco:99301"},
    {"WI",
     "Milwaukee:53202-53213;Madison:53703-53706,53711,53713-53719;"
     "Green Bay:54301-54304,54311,54313;Kenosha:53140,53142-53144;Racine:53402-53406;"
     "Appleton:54911,54913-54915;Waukesha:53186,53188,53189;Eau Claire:54701,54703;"
     "Oshkosh:54901,54902,54904;Janesville:53545,53546,53548;La Crosse:54601,54603;"
     "Sheboygan:53081,53083;Fond du Lac:54935,54937;New Berlin:53146,53151;"
     "Wausau:54401,54403"},
    {"WV",
     "Charleston:25301-25304,25311-25314;Huntington:25701-25705;"
     "Morgantown:26501,26505,26508;Parkersburg:26101,26104,26105;Wheeling:26003;"
     "Weirton:26062;Fairmont:26554;Martinsburg:25401,25403-25405;Beckley:25801;"
     "Clarksburg:26301;South Charleston:25303,25309;Saint Albans:25177;Bluefield:24701;"
     "Moundsville:26041;Bridgeport:26330"},
    {"WY",
     "Cheyenne:82001,82007,82009;Casper:82601,82604,82609;Laramie:82070,82072;"
     "Gillette:82716,82718;Rock Springs:82901;Sheridan:82801;Green River:82935;"
     "Evanston:82930;Riverton:82501;Jackson:83001;Cody:82414;Rawlins:82301;Lander:82520;"
     "Torrington:82240;Powell:82435"},
};

struct Place {
    QString city;
    QString state;
    QString zip;
};

void AddZips(const QString& city, const QString& state, const QString& zips, QList<Place>& out) {
    for (const QString& item : zips.split(QLatin1Char(','))) {
        const QStringList range = item.split(QLatin1Char('-'));
        const int first = range.first().toInt();
        const int last = range.last().toInt();
        for (int zip = first; zip <= last; ++zip)
            out.append({city, state, QStringLiteral("%1").arg(zip, 5, 10, QLatin1Char('0'))});
    }
}

QList<Place> DemoPlaces() {
    QList<Place> places;
    for (const StatePlaces& s : kPlaces) {
        const QString state = QLatin1String(s.state);
        for (const QString& place : QString::fromLatin1(s.places).split(QLatin1Char(';'))) {
            const qsizetype colon = place.indexOf(QLatin1Char(':'));
            AddZips(place.left(colon), state, place.mid(colon + 1), places);
        }
    }
    return places;
}

}  // namespace

int SeedDemoZipCodes(db::Connection& connection) {
    if (db::ReadScalar(connection, QStringLiteral("SELECT count(*) FROM ZipCodTable")).toInt() > 0)
        return 0;
    db::Transaction transaction(connection);
    const int rows = InsertDemoZipCodes(connection);
    transaction.Commit();
    return rows;
}

int InsertDemoZipCodes(db::Connection& connection) {
    const QList<Place> places = DemoPlaces();
    for (qsizetype start = 0; start < places.size(); start += kRowsPerInsert) {
        QStringList rows;
        for (qsizetype i = start; i < std::min(places.size(), start + kRowsPerInsert); ++i) {
            const Place& p = places[i];
            rows << QStringLiteral("(%1, %2, %3)")
                        .arg(db::QuoteText(p.city), db::QuoteText(p.state), db::QuoteText(p.zip));
        }
        connection.Execute(
            QStringLiteral("INSERT INTO ZipCodTable (ZipCodCit, ZipCodSta, ZipCodZip) VALUES ") +
            rows.join(QStringLiteral(", ")));
    }
    return static_cast<int>(places.size());
}

}  // namespace orvo::host
