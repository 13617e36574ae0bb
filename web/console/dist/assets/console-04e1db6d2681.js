var oe,js,rl,En,il,Wo,Gs,Vo,Ys,ll,ol,Rf,lo=Symbol.for("pv"),Uo={},Bo=[],Of=/^m(i|n|o|s|text|space)$/,sl=Array.isArray,al=Bo.
slice,Kn=Object.assign;function Bn(e){e&&e.parentNode&&e.remove()}function Qs(e,t,n){var i,o,s,a={},c=arguments.length;for(s in t)
s=="key"?i=t[s]:s=="ref"&&typeof e!="function"?o=t[s]:a[s]=t[s];return c>2&&(a.children=c>3?al.call(arguments,2):n),ro(e,
a,i,o,null)}function ro(e,t,n,i,o){var s={type:e,props:t,key:n,ref:i,__k:null,__:null,__b:0,__e:null,__c:null,constructor:lo,__v:o||
++js,__i:-1,__u:0};return!o&&oe.vnode&&oe.vnode(s),s}function me(e){return e.children}function Pi(e,t){this.props=e,this.context=t,this.__g=0}function Cn(e,t){if(t==null)return e.
__&&Cn(e.__,e.__i+1);for(var n;t<e.__k.length;t++)if((n=e.__k[t])&&n.__e)return n.__e;return typeof e.type!="function"||
e.props.__P?null:Cn(e)}function Ff(e){var t,n=e.__v,i=n.__e,o=[],s=[],a=e.__P;a&&((t=Kn({constructor:lo},n)).__v=n.__v+1,
oe.vnode&&oe.vnode(t),ul(a,t,n,e.__n,a.namespaceURI,32&n.__u?[i]:null,o,i||Cn(n),32&n.__u,s),t.__v=n.__v,t.__.__k[t.__i]=
t,na(o,t,s),n.__=n.__e=null,t.__e!=i&&Js(t))}function Js(e){if((e=e.__)&&e.__c&&!e.props.__P)return e.__e=null,e.__k.some(
function(t){return t&&(e.__e=t.__e)}),Js(e)}function Bs(e){(8&e.__g||(e.__g|=8,En.push(e),Wo++))&&il==oe.debounceRendering||
((il=oe.debounceRendering)||queueMicrotask)(Zs)}function Zs(){try{for(var e,t=1;En.length;)En.length>t&&En.sort(Gs),e=En.
shift(),t=En.length,8&e.__g&&Ff(e)}finally{(Wo=En.length)&&(il||queueMicrotask)(Zs)}}function Xs(e,t,n,i,o,s,a,c,p,m,g){
var _,y,v,x,E,M,A=i.__k||Bo,w=t.length;for(p=If(n,t,A,p,w),_=0;_<w;_++)(v=n.__k[_])!=null&&(y=~v.__i&&A[v.__i]||Uo,v.__i=
_,M=ul(e,v,y,o,s,a,c,p,m,g),x=v.__e,(y.ref!=v.ref||8&y.__u)&&(y.ref&&cl(y.ref,null,v,y),v.ref&&g.push(v.ref,v.__c||x,v)),
E=E||x,4&v.__u?(p=ea(v,p,e,!y.__v),y.__e&&(y.__e=null)):typeof v.type=="function"&&M!==void 0?p=M:x&&(p=x.nextSibling),v.
__u&=-21);return n.__e=E,p}function If(e,t,n,i,o){var s,a,c,p,m,g,_,y,v,x=n.length,E=x,M=0,A=0,w=e.__k=Array(o);for(s=0;s<
o;s++)(a=t[s])!=null&&typeof a!="boolean"&&typeof a!="function"?(typeof a!="object"||a.constructor===String?a=w[s]=ro(null,
a):sl(a)?a=w[s]=ro(me,{children:a}):a.constructor===lo&&a.__b?a=w[s]=ro(a.type,a.props,a.key,a.ref,a.__v):w[s]=a,p=s+M,a.
__=e,a.__b=e.__b+1,c=null,~(m=a.__i=Hf(a,n,p,E))&&(E--,(c=n[m])&&(c.__u|=2)),c&&c.__v?(a.__u|=16,m==p-1?M--:m==p+1?M++:m!=
p&&(m>p?M--:M++,A=1)):(~m||(o>x?M--:o<x&&M++),typeof a.type!="function"&&(a.__u|=4))):w[s]=null;if(A){for(g=[],_=[],s=0;s<
o;s++)if((a=w[s])&&16&a.__u){for(M=0,y=g.length;M<y;)g[v=M+y>>1]<a.__i?M=v+1:y=v;g[M]=a.__i,_[s]=M+1}for(M=g.length;s--;)
_[s]&&(_[s]==M?M--:w[s].__u|=4)}if(E)for(s=0;s<x;s++)!(c=n[s])||2&c.__u||(c.__e==i&&(i=Cn(c)),fl(c,c));return i}function ea(e,t,n,i){
var o,s,a,c;if(typeof e.type=="function"){if(e.props.__P)return t;if(o=e.__k)for(s=0;s<o.length;s++)o[s]&&(o[s].__=e,t=ea(
o[s],t,n,!1));return t}for(t&&!t.parentNode&&(t=Cn(e))&&!t.parentNode&&(t=null),a=e.__e,c=t;c&&c.nodeType==8;)c=c.nextSibling;
for(a!=c&&(!i&&n.moveBefore&&a.parentNode?n.moveBefore(a,t):n.insertBefore(a,t||null)),t=a;(t=t&&t.nextSibling)&&t.nodeType==
8&&!t.data.startsWith("$s"););return t}function Hf(e,t,n,i){var o,s=e.key,a=e.type,c=t[n],p=c&&!(2&c.__u);if(c===null&&s==null||p&&s==c.key&&a==c.type)return n;
if(i>(p?1:0)){for(o=n-1;o>=0;o--)if((c=t[o])&&!(2&c.__u)&&s==c.key&&a==c.type)return o;for(o=n+1;o<t.length;o++)if((c=t[o])&&
!(2&c.__u)&&s==c.key&&a==c.type)return o}return-1}function Ks(e,t,n){n==null&&(n=""),t[0]=="-"?e.setProperty(t,n):e[t]=n}
function zo(e,t,n,i,o){var s,a;if(t=="style")if(typeof n=="string")e.style.cssText=n;else{if(typeof i=="string"&&(e.style.
cssText=i=""),i)for(t in i)n&&t in n||Ks(e.style,t);if(n)for(t in n)i&&n[t]==i[t]||Ks(e.style,t,n[t])}else if(t[0]=="o"&&
t[1]=="n")typeof n!="function"&&(n=null),typeof i!="function"&&(i=null),(e.__e||(e.__e={}))[t]=n,n&&i||(a=ol[t]||(ol[t]=
zf(t)),(e.__a||(e.__a={}))[t]=ll,s=t!=(t=t.replace(Ys,"$1")),(t=t.slice(2))[0]<"a"&&(t=t.toLowerCase()),n?e.addEventListener(
t,a,s):e.removeEventListener(t,a,s));else{if(o=="http://www.w3.org/2000/svg")t=t.replace(/xlink(H|:h)/,"h").replace(/sName$/,
"s");else if(t!="width"&&t!="height"&&t!="href"&&t!="list"&&t!="form"&&t!="tabIndex"&&t!="download"&&t!="rowSpan"&&t!="c\
olSpan"&&t!="role"&&t!="popover"&&t in e)try{return void(e[t]=n??"")}catch{}if(typeof n=="function")return;n==null||n===
!1&&t[4]!="-"?e.removeAttribute(t):e.setAttribute(t,t=="popover"&&n==1?"":n)}}function zf(e){return function(t){var n=this.
__e;if(n){if(n=n[e],t[Vo]==null)t[Vo]=ll++;else if(t[Vo]<this.__a[e])return;return n(oe.event?oe.event(t):t)}}}function ul(e,t,n,i,o,s,a,c,p,m){
var g,_,y,v,x,E,M,A,w,$,S,Y,O,Q,W,X,q,P,U=t.type;if(t.constructor!==lo)return null;128&n.__u&&(p=32&n.__u,g=n.__c.__z)&&
(t.__u|=p,_=s=[],g.nodeType==8?c=qo(g,s):s.push(g),c=s[0]||c),(g=oe.__b)&&g(t);e:if(typeof U=="function"){y=a.length;try{
if(A=t.props,w=(g=U.prototype)&&g.render,$=(g=U.contextType)&&i[g.__c],S=g?$?$.props.value:g.__:i,(v=n.__c)?(t.__c=v,2&v.
__g&&(v.__g|=1)):(w?t.__c=v=new U(A,S):(t.__c=v=new Pi(A,S),v.constructor=U,v.render=qf),$&&$.sub(v),v.state||(v.state={}),
v.__n=i,v.__g|=8,v.__h=[],v.__k=[]),w&&(v.__s||(v.__s=v.state),U.getDerivedStateFromProps&&(v.__s==v.state&&(v.__s=Kn({},
v.__s)),Kn(v.__s,U.getDerivedStateFromProps(A,v.__s)))),x=v.props,E=v.state,v.__v=t,n.__c){if(A!==x&&w&&!U.getDerivedStateFromProps&&
v.componentWillReceiveProps&&v.componentWillReceiveProps(A,S),t.__v==n.__v&&!(8&v.__g)||!(4&v.__g)&&v.shouldComponentUpdate&&
v.shouldComponentUpdate(A,v.__s,S)===!1){t.__v!=n.__v&&(v.props=A,v.state=v.__s,v.__g&=-9),t.__e=n.__e,t.__k=n.__k,t.__k.
some(function(L){L&&(L.__=t)}),Bo.push.apply(v.__h,v.__k),v.__k=[],v.__h.length&&a.push(v),c=Cn(n);break e}v.componentWillUpdate&&
v.componentWillUpdate(A,v.__s,S),w&&v.componentDidUpdate&&v.__h.push(function(){v.componentDidUpdate(x,E,M)})}else w&&!U.
getDerivedStateFromProps&&v.componentWillMount&&v.componentWillMount(),w&&v.componentDidMount&&v.__h.push(v.componentDidMount);
v.context=S,v.props=A,v.__P=e,v.__g&=-5,Y=oe.__r,O=w?25:0;do v.__g&=-9,Y&&Y(t),g=v.render(v.props,v.state=v.__s,v.context);while(8&
v.__g&&++O<25);w&&(Bo.push.apply(v.__h,v.__k),v.__k=[]),v.state=v.__s,v.getChildContext&&(i=Kn({},i,v.getChildContext())),
w&&n.__c&&v.getSnapshotBeforeUpdate&&(M=v.getSnapshotBeforeUpdate(x,E)),Q=g&&g.type===me&&g.key==null?g.props.children:g,
A.__P&&(g=c,o=(e=A.__P).namespaceURI,p=s=null,n.props&&n.props.__P!=e&&(n.__k.some(function(L){L&&fl(L,L)}),n.__k=null),
c=n.__k?Cn(n,0):null),c=Xs(e,sl(Q)?Q:[Q],t,n,i,o,s,a,c,p,m),A.__P&&(t.__e=null,c=g),t.__u&=-161,_&&_.some(Bn),v.__h.length&&
a.push(v),1&v.__g&&(v.__g&=-4)}catch(L){if(a.length=y,t.__v=null,p||s)if(L&&L.then){if(t.__u|=128|p,s){for(~(q=s.indexOf(
c||void 0))||(q=s.length);(P=s[q-1])&&P.nodeType==8;)q--;for(;q<s.length;q++)if(P=s[q])if(s[q]=null,W){if(P==X)break}else{
if(P.nodeType!=8)break;P.data.startsWith("$s")&&(X=qo(W=P))}}if(!W){for(;c&&c.nodeType==8&&c.nextSibling;)c=c.nextSibling;
W=c}(g=qo(W=t.__c.__z||(t.__c.__z=W)))?(t.__e=W,c=g):t.__e=c,c=c&&c.nextSibling}else s&&s.some(Bn);else t.__e=n.__e;t.__k||
(t.__k=n.__k||[]),L&&L.then||ta(t),oe.__e(L,t,n)}}else c=t.__e=Vf(n.__e,t,n,i,o,s,a,p,m,e);return(g=oe.diffed)&&g(t),c}function qo(e,t){
if(e&&e.nodeType==8&&e.data.startsWith("$s"))for(var n=1;e=e.nextSibling;){if(e.nodeType==8){if(e.data.startsWith("$s"))
n++;else if(e.data.startsWith("/$s")&&!--n)return e}t&&t.push(e)}}function ta(e){e&&(e.__c&&(e.__c.__g|=4),e.__k&&e.__k.
some(ta))}function na(e,t,n){for(var i=0;i<n.length;)cl(n[i++],n[i++],n[i++]);oe.__c&&oe.__c(t,e),e.some(function(o){try{
e=o.__h,o.__h=[],e.some(function(s){s.call(o)})}catch(s){oe.__e(s,o.__v)}})}function Vf(e,t,n,i,o,s,a,c,p,m){var g,_,y,v,
x,E,M,A,w=n.props||Uo,$=t.props,S=t.type;if(S=="svg"?o="http://www.w3.org/2000/svg":S=="math"?o="http://www.w3.org/1998/\
Math/MathML":o||(o="http://www.w3.org/1999/xhtml"),s){for(g=0;g<s.length;g++)if((x=s[g])&&(S?x.localName==S:x.nodeType==
3)){e=x,s[g]=null;break}}if(!e){if(A=m.ownerDocument||document,!S)return A.createTextNode($);e=A.createElementNS(o,S,$.is?
$:m),c&&(oe.__m&&oe.__m(t,s),c=!1),s=null}if(S){if(m=S=="template"&&e.content||e,s=S=="textarea"&&$.defaultValue!=null?null:
s&&al.call(m.childNodes),!c&&s)for(w={},g=0;g<e.attributes.length;g++)w[(x=e.attributes[g]).name]=x.value;for(g in w)x=w[g],
g=="dangerouslySetInnerHTML"?y=x:g=="children"||g in $||g=="value"&&"defaultValue"in $||g=="checked"&&"defaultChecked"in
$||zo(e,g,null,x,o);for(g in $)x=$[g],g=="children"?v=x:g=="dangerouslySetInnerHTML"?_=x:g=="value"?E=x:g=="checked"?M=x:
c&&typeof x!="function"||w[g]===x||zo(e,g,x,w[g],o);_?(c||y&&(_.__html==y.__html||_.__html==e.innerHTML)||(e.innerHTML=_.
__html),t.__k=[]):(y&&(e.textContent=""),(S=="foreignObject"||o=="http://www.w3.org/1998/Math/MathML"&&Of.test(S))&&(o="\
http://www.w3.org/1999/xhtml"),Xs(m,sl(v)?v:[v],t,n,i,o,s,a,s?s[0]:n.__k&&Cn(n,0),c,p),s&&s.some(Bn)),c&&S!="textarea"||
(g="value",S=="progress"&&E==null?e.removeAttribute(g):E==null||E===e[g]&&(S!="progress"||E)||zo(e,g,E,w[g],o),g="checke\
d",M!=null&&M!=e[g]&&zo(e,g,M,w[g],o))}else w===$||c&&e.data==$||(e.data=$);return e}function cl(e,t,n,i){try{typeof e==
"function"?t?t.__x=e(t)||1:i&&(i=i.__c||i.__e)&&(t=i.__x)&&(i.__x=null,typeof t=="function"?t():e(null)):e.current=t}catch(o){
oe.__e(o,n)}}function fl(e,t,n){var i,o,s,a;if(oe.unmount&&oe.unmount(e),!(i=e.ref)||i.current&&i.current!=e.__e||cl(i,null,
t,e),i=e.__c){if(i.componentWillUnmount)try{i.componentWillUnmount()}catch(c){oe.__e(c,t)}i.__P=i.__n=null}if(i=e.__k)for(a=
0;a<i.length;a++)i[a]&&fl(i[a],t,typeof e.type!="function"||n&&!e.props.__P);!n&&(i=e.__c)&&(i=i.__z)&&(o=qo(i,s=[]))&&(i==
e.__e&&s.some(Bn),Bn(o),Bn(i)),n||Bn(e.__e),e.__e=e.__c=e.__=null}function qf(e,t,n){return this.constructor(e,n)}function ia(e,t){
var n,i,o,s;oe.__&&oe.__(e,t),t.nodeType==9&&(t=t.documentElement),i=(n=e&&32&e.__u)?null:t.__k,t.__k=ro(me,{children:[e]}),
o=[],s=[],ul(t,t.__k,i||Uo,Uo,t.namespaceURI,i?null:t.firstChild?al.call(t.childNodes):null,o,i?i.__e:t.firstChild,n,s),
na(o,t.__k,s),t.__k.props.children=null}oe={__e:function(e,t,n,i){for(var o,s,a;t=t.__;)if((o=t.__c)&&!(1&o.__g)){o.__g|=4;try{if((a=(s=o.constructor)&&s.getDerivedStateFromError)&&
o.setState(s.getDerivedStateFromError(e)),o.componentDidCatch&&(o.componentDidCatch(e,i||{}),a=1),a&&8&o.__g)return void(o.
__g|=2)}catch(c){e=c}}throw Wo=0,e}},js=0,rl=function(e){return e!=null&&e.constructor===lo},Pi.prototype.setState=function(e,t){
var n=this.__s;n&&n!=this.state||(n=this.__s=Kn({},this.state)),typeof e=="function"&&(e=e(Kn({},n),this.props)),e&&(Kn(
n,e),this.__v&&(t&&this.__k.push(t),Bs(this)))},Pi.prototype.forceUpdate=function(e){this.__v&&(this.__g|=4,e&&this.__h.
push(e),Bs(this))},Pi.prototype.render=me,En=[],Wo=0,Gs=function(e,t){return e.__v.__b-t.__v.__b},Vo=Symbol(),Ys=/(PointerCapture)$|Capture$/i,
ll=0,ol={},Rf=0;var jn,Le,dl,oa,pl=Object.is,Ko=0,pa=[],ml=[],De=oe,ra=De.__b,la=De.__r,sa=De.diffed,aa=De.__c,ua=De.unmount,ca=De.__;function ao(e,t){
De.__h&&De.__h(Le,e,Ko||t),Ko=0;var n=Le.__H||(Le.__H={__:[],__h:[]});return e>=n.__.length&&n.__.push({}),n.__[e]}function Jt(e){
return Ko=1,Wf(ha,e)}function Wf(e,t,n){var i=ao(jn++,2);if(i.t=e,!i.__c&&(i.__=[n?n(t):ha(void 0,t),function(s){var a=(i.
__N||i.__)[0],c=i.t(a,s);pl(a,c)||(i.__N=[c,i.__[1]],i.__c.setState({}))}],i.__c=Le,!Le.__f)){Le.__f=!0;var o=Le.shouldComponentUpdate;
Le.shouldComponentUpdate=function(s,a,c){var p=this.__H;if(!p)return!0;var m=!1,g=this.props!=s;if(p.__.some(function(y){
y.__N&&(m=!0,pl(y.__[0],y.__N[0])||(g=!0))}),o){var _=o.call(this,s,a,c);return m?_||g:_}return!m||g}}return i.__}function Ce(e,t){
var n=ao(jn++,3);!De.__s&&vl(n.__H,t)&&(n.__P=!0,n.__=e,n.u=t,Le.__H.__h.push(n))}function gl(e,t){var n=ao(jn++,4);!De.
__s&&vl(n.__H,t)&&(n.__P=!1,n.__=e,n.u=t,Le.__h.push(n))}function Re(e){return Ko=5,jo(function(){return{current:e}},[])}function jo(e,t){var n=ao(jn++,7);return vl(n.__H,t)&&(n.__=e(),n.__H=t),n.__}function ma(){var e=ao(jn++,11);if(!e.__){for(var t=Le.__v;!t.__m&&t.__;)t=t.__;var n=t.__m||(t.__m=[0,0]);e.__="P"+n[0]+
"-"+n[1]++}return e.__}function Uf(){var e;do{for(;e=ml.shift();)try{so(e)}catch(n){De.__e(n,{__:(e=e.__P)&&e.__v})}for(;e=
pa.shift();){var t=e.__H;if(e.__P&&t)try{t.__h.some(so),t.__h.some(hl),t.__h=[]}catch(n){t.__h=[],De.__e(n,e.__v)}}}while(ml.
length)}De.__b=function(e){Le=null,ra&&ra(e)},De.__=function(e,t){e&&t.__k&&t.__k.__m&&(e.__m=t.__k.__m),ca&&ca(e,t)},De.
__r=function(e){la&&la(e),jn=0;var t=(Le=e.__c).__H;t&&(dl==Le?Le.__h=[]:(t.__h.some(so),t.__h.some(hl),jn=0),t.__h=[],t.
__.some(function(n){n.__N&&(n.__=n.__N),n.u=n.__N=void 0})),dl=Le},De.diffed=function(e){sa&&sa(e);var t=e.__c;t&&t.__H&&
(t.__H.__h.length&&da(pa.push(t)),t.__H.__.some(function(n){n.u&&(n.__H=n.u)})),dl=Le=null},De.__c=function(e,t){t.some(
function(n){try{n.__h.some(so),n.__h=n.__h.filter(function(i){return!i.__||hl(i)})}catch(i){n.__h=[function(){throw i}]}}),
aa&&aa(e,t)},De.unmount=function(e){ua&&ua(e);var t,n,i=e.__c;i&&i.__H&&(i.__H.__.some(function(o){try{if(o.__P&&o.__c){
if(n===void 0){for(n=e.__;n&&(!n.__c||!n.__c.__P);)n=n.__;n=n&&n.__c}o.__P=n,da(ml.push(o))}else so(o)}catch(s){t=s}}),i.
__H=void 0,t&&De.__e(t,i.__v))};var fa=typeof requestAnimationFrame=="function";function Bf(e){var t,n=function(){clearTimeout(
i),fa&&cancelAnimationFrame(t),setTimeout(e)},i=setTimeout(n,35);fa&&(t=requestAnimationFrame(n))}function da(e){e!=1&&oa==
De.requestAnimationFrame||((oa=De.requestAnimationFrame)||Bf)(Uf)}function so(e){var t=Le,n=e.__c;typeof n=="function"&&
(e.__c=void 0,n()),Le=t}function hl(e){var t=Le;e.__c=e.__(),Le=t}function vl(e,t){return!e||e.length!=t.length||t.some(
function(n,i){return!pl(n,e[i])})}function ha(e,t){return typeof t=="function"?t(e):t}var Kf=Symbol.for("preact-signals");function Jo(){if(an>1)an--;else{var e,t=!1;for((function(){var o=Yo;for(Yo=void 0;o!==
void 0;){var s=o.S;if(s.v===o.v)for(var a=s.t;a!==void 0;a=a.x)a.i===o.i&&(a.i=s.i);o=o.o}})();co!==void 0;){var n=co;for(co=
void 0,Go++;n!==void 0;){var i=n.u;if(n.u=void 0,n.f&=-3,!(8&n.f)&&va(n))try{n.c()}catch(o){t||(e=o,t=!0)}n=i}}if(Go=0,an--,
t)throw e}}function bl(e){if(an>0)return e();_l=++jf,an++;try{return e()}finally{Jo()}}var uo,Me=void 0;function Zt(e){var t=Me,
n=uo;Me=void 0,uo=void 0;try{return e()}finally{Me=t,uo=n}}var co=void 0,an=0,Go=0,jf=0,_l=0,Yo=void 0,Qo=0;function ga(e){
if(Me!==void 0){var t=e.n;if(t===void 0||t.t!==Me)return t={i:0,S:e,p:Me.s,n:void 0,t:Me,e:void 0,x:void 0,r:t},Me.s!==void 0&&
(Me.s.n=t),Me.s=t,e.n=t,32&Me.f&&e.S(t),t;if(t.i===-1)return t.i=0,t.n!==void 0&&(t.n.p=t.p,t.p!==void 0&&(t.p.n=t.n),t.
p=Me.s,t.n=void 0,Me.s.n=t,Me.s=t),t}}function He(e,t){this.v=e,this.i=0,this.n=void 0,this.t=void 0,this.l=0,this.W=t?.
watched,this.Z=t?.unwatched,this.name=t?.name}He.prototype.brand=Kf;He.prototype.h=function(){return!0};He.prototype.S=function(e){
var t=this,n=this.t;n!==e&&e.e===void 0&&(e.x=n,this.t=e,n!==void 0?n.e=e:Zt(function(){var i;(i=t.W)==null||i.call(t)}))};
He.prototype.U=function(e){var t=this;if(this.t!==void 0){var n=e.e,i=e.x;n!==void 0&&(n.x=i,e.e=void 0),i!==void 0&&(i.
e=n,e.x=void 0),e===this.t&&(this.t=i,i===void 0&&Zt(function(){var o;(o=t.Z)==null||o.call(t)}))}};He.prototype.subscribe=
function(e){var t=this;return Qe(function(){var n=t.value;Zt(function(){return e(n)})},{name:"sub"})};He.prototype.valueOf=
function(){return this.value};He.prototype.toString=function(){return this.value+""};He.prototype.toJSON=function(){return this.
value};He.prototype.peek=function(){var e=this;return Zt(function(){return e.value})};Object.defineProperty(He.prototype,
"value",{get:function(){var e=ga(this);return e!==void 0&&(e.i=this.i),this.v},set:function(e){if(e!==this.v){if(Go>100)
throw new Error("Cycle detected");(function(n){an!==0&&Go===0&&n.l!==_l&&(n.l=_l,Yo={S:n,v:n.v,i:n.i,o:Yo})})(this),this.
v=e,this.i++,Qo++,an++;try{for(var t=this.t;t!==void 0;t=t.x)t.t.N()}finally{Jo()}}}});function J(e,t){return new He(e,t)}
function va(e){for(var t=e.s;t!==void 0;t=t.n)if(t.S.i!==t.i||!t.S.h()||t.S.i!==t.i)return!0;return!1}function _a(e){for(var t=e.
s;t!==void 0;t=t.n){var n=t.S.n;if(n!==void 0&&(t.r=n),t.S.n=t,t.i=-1,t.n===void 0){e.s=t;break}}}function ba(e){for(var t=e.
s,n=void 0;t!==void 0;){var i=t.p;t.i===-1?(t.S.U(t),i!==void 0&&(i.n=t.n),t.n!==void 0&&(t.n.p=i)):n=t,t.S.n=t.r,t.r!==
void 0&&(t.r=void 0),t=i}e.s=n}function Gn(e,t){He.call(this,void 0,t),this.x=e,this.s=void 0,this.g=Qo-1,this.f=4}Gn.prototype=
new He;Gn.prototype.h=function(){if(this.f&=-3,1&this.f)return!1;if((36&this.f)==32||(this.f&=-5,this.g===Qo))return!0;if(this.
g=Qo,this.f|=1,this.i>0&&!va(this))return this.f&=-2,!0;var e=Me;try{_a(this),Me=this;var t=this.x();(16&this.f||this.v!==
t||this.i===0)&&(this.v=t,this.f&=-17,this.i++)}catch(n){this.v=n,this.f|=16,this.i++}return Me=e,ba(this),this.f&=-2,!0};
Gn.prototype.S=function(e){if(this.t===void 0){this.f|=36;for(var t=this.s;t!==void 0;t=t.n)t.S.S(t)}He.prototype.S.call(
this,e)};Gn.prototype.U=function(e){if(this.t!==void 0&&(He.prototype.U.call(this,e),this.t===void 0)){this.f&=-33;for(var t=this.
s;t!==void 0;t=t.n)t.S.U(t)}};Gn.prototype.N=function(){if(!(2&this.f)){this.f|=6;for(var e=this.t;e!==void 0;e=e.x)e.t.
N()}};Object.defineProperty(Gn.prototype,"value",{get:function(){if(1&this.f)throw new Error("Cycle detected");var e=ga(
this);if(this.h(),e!==void 0&&(e.i=this.i),16&this.f)throw this.v;return this.v}});function tt(e,t){return new Gn(e,t)}function ya(e){
var t=e.j;if(e.j=void 0,typeof t=="function"){an++;var n=Me;Me=void 0;try{t()}catch(i){throw e.f&=-2,e.f|=8,yl(e),i}finally{
Me=n,Jo()}}}function yl(e){for(var t=e.s;t!==void 0;t=t.n)t.S.U(t);e.x=void 0,e.s=void 0,ya(e)}function Gf(e){if(Me!==this)
throw new Error("Out-of-order effect");ba(this),Me=e,this.f&=-2;try{8&this.f&&yl(this)}finally{Jo()}}function Ai(e,t){this.
x=e,this.j=void 0,this.s=void 0,this.u=void 0,this.f=32,this.name=t?.name,uo&&uo.push(this)}Ai.prototype.c=function(){var e=this.
S();try{if(8&this.f||this.x===void 0)return;var t=this.x();typeof t=="function"&&(this.j=t)}finally{e()}};Ai.prototype.S=
function(){if(1&this.f)throw new Error("Cycle detected");this.f|=1,this.f&=-9,ya(this),_a(this),an++;var e=Me;return Me=
this,Gf.bind(this,e)};Ai.prototype.N=function(){2&this.f||(this.f|=2,this.u=co,co=this)};Ai.prototype.d=function(){this.
f|=8,1&this.f||yl(this)};Ai.prototype.dispose=function(){this.d()};function Qe(e,t){var n=new Ai(e,t);try{n.c()}catch(o){
throw n.d(),o}var i=n.d.bind(n);return i[Symbol.dispose]=i,i}var wa,Xo,Zo,Yf=typeof window<"u"&&!!window.__PREACT_SIGNALS_DEVTOOLS__;var xa=[];Qe(function(){wa=this.N})();function $i(e,t){oe[e]=t.bind(null,oe[e]||function(){})}function fo(e){if(Zo){var t=Zo;
Zo=void 0,t()}Zo=e&&e.S()}function ka(e){var t=this,n=e.data,i=Pn(n);i.name="ReactiveDom",i.value=n;var o=jo(function(){
for(var c=t,p=t.__v;p=p.__;)if(p.__c){p.__c.__$f|=4;break}var m=tt(function(){var v=i.value.value;return v===0?0:v===!0?
"":v||""}),g=tt(function(){return!Array.isArray(m.value)&&!rl(m.value)}),_=Qe(function(){if(this.N=Sa,g.value){var v=m.value;
c.__v&&c.__v.__e&&c.__v.__e.nodeType===3&&(c.__v.__e.data=v)}}),y=t.__$u.d;return t.__$u.d=function(){_(),y.call(this)},
[g,m]},[]),s=o[0],a=o[1];return s.value?a.peek():a.value}ka.displayName="ReactiveTextNode";Object.defineProperties(He.prototype,
{constructor:{configurable:!0,value:Qs(me,null).constructor},type:{configurable:!0,value:ka},props:{configurable:!0,get:function(){
var e=this;return{data:{get value(){return e.value}}}}},__b:{configurable:!0,value:1}});$i("__b",function(e,t){if(fo(),Xo=
void 0,typeof t.type=="string"){var n,i=t.props;for(var o in i)if(o!=="children"){var s=i[o];s instanceof He&&(n||(t.__np=
n={}),n[o]=s,i[o]=s.peek())}}e(t)});$i("__r",function(e,t){if(e(t),t.type!==me){fo();var n,i=t.__c;i&&(i.__$f&=-2,(n=i.__$u)===
void 0&&(i.__$u=n=(function(o,s){var a;return Qe(function(){a=this},{name:s}),a.c=o,a})((function(o){return function(){var s;
Yf&&((s=this.y)==null||s.call(this)),o.__$f|=1,o.setState({})}})(i),typeof t.type=="function"?t.type.displayName||t.type.
name:""))),Xo=i,fo(n)}});$i("__e",function(e,t,n,i){fo(),Xo=void 0,e(t,n,i)});$i("diffed",function(e,t){fo(),Xo=void 0;var n;
if(typeof t.type=="string"&&(n=t.__e)){var i=t.__np,o=t.props,s=n.U;if(s)for(var a in s){var c=s[a];c===void 0||i&&a in i||
(c.d(),s[a]=void 0)}if(i){s||(s={},n.U=s);for(var p in i){var m=s[p],g=i[p];m===void 0?(m=Qf(n,p,g,o),s[p]=m):m.o(g,o)}}}
e(t)});function Qf(e,t,n,i){var o=t in e&&e.ownerSVGElement===void 0,s=J(n);return{o:function(a,c){s.value=a,i=c},d:Qe(function(){
this.N=Sa;var a=s.value.value;i[t]!==a&&(i[t]=a,o?e[t]=a:a!=null&&(a!==!1||t[4]==="-")?e.setAttribute(t,a):e.removeAttribute(
t))})}}$i("unmount",function(e,t){if(typeof t.type=="string"){var n=t.__e;if(n){var i=n.U;if(i){n.U=void 0;for(var o in i){
var s=i[o];s&&s.d()}}}var a=t.__np;if(a){var c=t.props;for(var p in a)c[p]=a[p]}t.__np=void 0}else{var m=t.__c;if(m){m.__$f|=
8;var g=m.__$u;g&&(m.__$u=void 0,g.d())}}e(t)});$i("__h",function(e,t,n,i){i<3&&(t.__$f|=2),e(t,n,i)});Pi.prototype.shouldComponentUpdate=
function(e,t){if(this.__R)return!0;var n=this.__$u,i=n&&n.s!==void 0;for(var o in t)return!0;if(this.__f||typeof this.u==
"boolean"&&this.u===!0){var s=2&this.__$f;if(!(i||s||4&this.__$f)||1&this.__$f)return!0}else if(!(i||4&this.__$f)||3&this.
__$f)return!0;for(var a in e)if(a!=="__source"&&e[a]!==this.props[a])return!0;for(var c in this.props)if(!(c in e))return!0;
return!1};function Pn(e,t){return jo(function(){return J(e,t)},[])}var Jf=function(e){queueMicrotask(function(){queueMicrotask(e)})};function Zf(){bl(function(){for(var e;e=xa.shift();)wa.call(e)})}function Sa(){xa.push(this)===1&&(oe.requestAnimationFrame||
Jf)(Zf)}var po=["overview","events","queues","limits","check","cluster"],er={overview:"Overview",events:"Events",queues:"Queues",
limits:"Limits",check:"Check",cluster:"Cluster"},tr=J(location.hash);addEventListener("hashchange",()=>{tr.value=location.
hash});var Ta=tt(()=>tr.value.replace(/^#\/?/,"").split("/")),Xt=tt(()=>{let[e]=Ta.value;return po.find(t=>t===e)??"over\
view"}),un=tt(()=>{let[e,t,n]=Ta.value;return e==="events"&&/^\d+$/.test(t??"")&&/^\d+$/.test(n??"")?{dsid:t,id:n}:void 0});
function Yn(e){location.hash=`#/${e}`}var wl={takesFocus:!0};function Di(e,t,n=!0){wl.takesFocus=n;let i=`#/events/${e}/${t}`;
un.value?history.replaceState(null,"",i):history.pushState(null,"",i),tr.value=i}function nr(){history.replaceState(null,
"","#/events"),tr.value="#/events"}var Xf=/"[^"\\]*(?:\\.[^"\\]*)*"|-?\d+(?:\.\d+)?(?:[eE][+-]?\d+)?/g;function ed(e){return e.length<16||!/^-?\d+$/.test(e)||
Number.isSafeInteger(Number(e))?e:`"${e}"`}function mo(e){return JSON.parse(e.replace(Xf,ed))}function ir(e,t){let n=BigInt(
e),i=BigInt(t);return n<i?-1:n>i?1:0}function or(e,t){let n=BigInt(e)-BigInt(t);return(n>0n?n:0n).toString()}var td=1e4,nt=class extends Error{constructor(n,i,o){super(i.detail||i.title||`The server answered with status ${n}.`);this.
status=n;this.problem=i;this.retryAfter=o}status;problem;retryAfter},rr=class extends Error{};async function nd(e){try{return mo(
await e.text())}catch{return{}}}async function xl(e,t,n={}){let i={...n.headers};e.token&&(i.Authorization=`Bearer ${e.token}`),
n.body!==void 0&&(i["Content-Type"]="application/json");let o;try{o=await fetch(t,{method:n.method??"GET",headers:i,body:n.
body===void 0?null:JSON.stringify(n.body),signal:n.signal??null,cache:"no-store",credentials:"same-origin"})}catch(a){throw new rr(
"The server does not answer.",{cause:a})}if(o.ok)return o;let s=Number(o.headers.get("Retry-After")??Number.NaN);throw new nt(
o.status,await nd(o),Number.isFinite(s)?s:void 0)}async function Ma(e,t,n={}){let i=AbortSignal.timeout(n.patience??td),
o=n.signal?AbortSignal.any([n.signal,i]):i,s=await xl(e,t,{...n,signal:o}),a;try{a=await s.text()}catch(c){throw new rr(
"The server broke off its answer.",{cause:c})}try{return mo(a)}catch{throw new nt(s.status,{detail:`The answer to ${t} i\
s not JSON.`},void 0)}}function Ea(e,t){let n=Number.NEGATIVE_INFINITY;return e.filter(({time:i,queues:o})=>{let s=t-i;return s>86400?!1:o.size===
0?!0:s>1200&&i-n<30?!1:(n=i,!0)})}var cn=J([]);function id(e,t){return e===void 0?void 0:Math.max(0,t-Number(e))}function od(e,t){let n=new Map,i={count:e.
count,oldestAge:void 0};for(let o of e.queues){let s=id(o.oldest,t);n.set(String(o.dsid),{count:o.count,oldestAge:s}),s!==
void 0&&(i.oldestAge=Math.max(i.oldestAge??0,s))}return n.set("all",i),n}var rd=90;function kl(e=Date.now()/1e3){let t=cn.
value.at(-1);t&&t.queues.size>0&&(cn.value=[...cn.value,{time:e,queues:new Map}])}function Ca(e){let t=Date.now()/1e3,n=cn.
value.at(-1);n&&t-n.time>rd&&kl(n.time+1),cn.value=[...Ea(cn.value,t),{time:t,queues:od(e,t)}]}function Pa(){cn.value=[]}var Sl="eventd.token",Pe=J("starting"),fn=J(),Li=J(""),ho=J(void 0),$a=tt(()=>ho.value!==void 0),Aa={read:1,write:2,admin:3};
function lr(e){return fn.value!==void 0&&Aa[fn.value.role]>=Aa[e]}function Tl(){let e=/^#token=(.+)$/.exec(location.hash);
if(!e?.[1])return!1;let t=e[1];try{t=decodeURIComponent(t)}catch{}return Ml(t),history.replaceState(null,"",location.pathname+
location.search),!0}function Ml(e){ho.value=e,e===void 0?sessionStorage.removeItem(Sl):sessionStorage.setItem(Sl,e)}function Da(){
ho.value=sessionStorage.getItem(Sl)??void 0}function El(e){Ml(void 0),fn.value=void 0,Li.value=e,Pe.value="out"}function La(){
El("")}function ld(){return{token:ho.value}}async function Na(e){let t=ld();try{return await e(t)}catch(n){throw n instanceof
nt&&n.status===401&&t.token===ho.value&&El(t.token===void 0?"":"The server refused this token."),n}}function At(e,t){return Na(
n=>Ma(n,e,t))}function Ra(e,t){return Na(n=>xl(n,e,t))}async function go(){try{fn.value=await At("/v1/whoami"),Li.value=
"",Pe.value="in"}catch(e){if(!(e instanceof nt&&e.status===401))throw e}}async function Oa(e){let t=e.trim();if(!/^[\x21-\x7e]+$/.
test(t)){Li.value="A token consists of visible ASCII characters, without blanks.";return}Ml(t);try{await go()}catch(n){El(
n instanceof Error?n.message:String(n))}}var sd=2e3,ad=1e4,ud=1e3,cd=1e4,it=J({is:"unknown"}),ze=J(),Ht=J(),en=J(),Ni=J(""),dn=J(),Pl=tt(()=>ze.value?.queues.find(
e=>String(e.dsid)==="0")),Fa;function fd(e){return new Promise(t=>{let n=setTimeout(t,e);Fa=()=>{clearTimeout(n),t()}})}
function Qn(){Fa?.()}function dd(e){let t=e instanceof Error?e.message:String(e);e instanceof nt?it.value={is:"troubled",
why:t}:it.value.is!=="down"&&(it.value={is:"down",since:Date.now(),why:t},kl())}function pd(e){let t=ze.value;t&&t.startTime!==
e.startTime&&(dn.value=e.startTime,Ht.value=void 0),ze.value=e,en.value=e.cluster,it.value={is:"up"},Ca(e)}var Cl=0;async function md(){
if(!(Date.now()<Cl)){Cl=Date.now()+ad;try{await At("/readyz"),Ni.value=""}catch(e){e instanceof nt&&(Ni.value=e.message)}}}
async function hd(){let e=await At("/v1/cluster");en.value=e.clustered?e:void 0}async function gd(){try{pd(await At("/v1\
/stats"))}catch(e){throw e instanceof nt&&Pe.value==="in"&&await hd().catch(()=>{}),e}}async function vd(){Pe.value==="s\
tarting"&&await go(),Pe.value==="in"&&(await gd(),Ht.value||(Ht.value=await At("/v1/limits")),await md())}function _d(e,t){
return e instanceof nt&&e.retryAfter!==void 0?e.retryAfter*1e3:Math.min(cd,Math.max(ud,t*1.6))}async function Ia(){let e=0;
for(;;){try{await vd(),e=0}catch(t){dd(t),e=_d(t,e)}await fd(e||sd)}}function Ha(){ze.value=void 0,Ht.value=void 0,en.value=
void 0,Ni.value="",dn.value=void 0,it.value={is:"unknown"},Cl=0,Pa()}function Al(e,t,n){let i=`eventd.${e}`,o=t.find(a=>a===localStorage.getItem(i)),s=J(o??n);return Qe(()=>localStorage.setItem(
i,s.value)),s}var sr=["auto","light","dark"],pn=Al("theme",sr,"auto"),Ve=Al("clock",["local","utc"],"local"),vo=Al("shor\
tcuts",["on","off"],"on");function ar(){pn.value=sr[(sr.indexOf(pn.value)+1)%sr.length]??"auto"}function za(){Ve.value=Ve.
value==="utc"?"local":"utc"}function Va(){Qe(()=>{document.documentElement.dataset.theme=pn.value})}var $l=class{rest="";id="";data=[];feed(t){let n=(this.rest+t).split(/\r\n|\n|\r(?!$)/);this.rest=n.pop()??"";let i=[];for(let o of n){
let s=this.take(o);s&&i.push(s)}return i}take(t){if(t===""){let s=this.data.length>0?{id:this.id,data:this.data.join(`
`)}:void 0;return this.data=[],s}let n=t.indexOf(":"),i=n<0?t:t.slice(0,n),o=n<0?"":t.slice(n+1).replace(/^ /,"");i==="d\
ata"&&this.data.push(o),i==="id"&&(this.id=o)}};async function qa(e,t,n){let i=e.getReader(),o=new TextDecoder,s=new $l;
for(;;){let{done:a,value:c}=await i.read();if(a)return;n();let p=s.feed(o.decode(c,{stream:!0}));p.length>0&&t(p)}}function Wa(e,t){let n=e.trim().toLowerCase();return i=>t.size>0&&!t.has(i.kind)?!1:n===""?!0:String(i.id)===n||i.kind.toLowerCase().
includes(n)||i.eventString.toLowerCase().includes(n)}var bd=500,Ya=2e3,_o=2e4,Ua=1e3,yd=10,wd=150,Ba=4e4,Ka=500,xd=15e3,kd=6e4,mn=J("off"),bo=J(""),lt=J("0"),zt=J(!1),Je=J([]),
Zn=J([]),Xn=J(0),nn=J(),Oi=J(""),An=J(new Set),Qa=tt(()=>Je.value.length>=_o),yo=tt(()=>Je.value.filter(Wa(Oi.value,An.value))),
Ri=Ya,tn,ur=[],cr;function Sd(){cr=void 0;let e=ur;if(ur=[],zt.value){let t=[...Zn.value,...e];Xn.value+=Math.max(0,t.length-
_o),Zn.value=t.slice(-_o)}else Ja(e)}function Ja(e){if(e.length===0)return;let t=[...e.reverse(),...Je.value];t.length>Ri&&
(nn.value=String(t[Ri]?.id)),Je.value=t.slice(0,Ri)}function Td(e){for(let t of e){let n=mo(t.data);tn!==void 0&&ir(n.id,
tn)<=0||(tn=String(n.id),ur.push(n))}cr??=setTimeout(Sd,wd)}function Md(){zt.value=!1;let e=Zn.value;Zn.value=[],Xn.value>
0&&(Je.value=[],nn.value=or(e[0]?.id??1,1)),Xn.value=0,Ja(e)}function fr(){zt.value?Md():zt.value=!0}function ja(){clearTimeout(
cr),cr=void 0,ur=[],tn=void 0,Ri=Ya,Je.value=[],Zn.value=[],Xn.value=0,nn.value=void 0}function Za(e){let t=ze.value?.queues.
find(n=>String(n.dsid)===e);return String(t?.highestId??0)}async function Ed(e,t,n){let i=`/v1/queues/${e}/events/stream`;
tn===void 0&&(tn=or(Za(e),bd),nn.value=tn);let o=new AbortController,s=setTimeout(()=>o.abort(),Ba),a=()=>{clearTimeout(
s),s=setTimeout(()=>o.abort(),Ba)};try{let c=await Ra(i,{headers:{Accept:"text/event-stream","Last-Event-ID":tn},signal:AbortSignal.
any([t,o.signal])});n();let p=m=>t.aborted||Td(m);c.body&&await qa(c.body,p,a)}finally{clearTimeout(s)}}var Xa;function Cd(e,t){
return new Promise(n=>{let i=setTimeout(n,e);Xa=n,t.addEventListener("abort",()=>{clearTimeout(i),n()})})}async function Pd(e,t){
let n=Ka;for(;!t.aborted;){mn.value="connecting";let i=0;try{await Ed(e,t,()=>{mn.value="live",bo.value="",n=Ka})}catch(o){
bo.value=o instanceof nt?o.message:"",o instanceof nt&&(i=(o.retryAfter??0)*1e3)}if(t.aborted)return;mn.value="broken",await Cd(
Math.max(i,n*(.75+Math.random()/2)),t),n=Math.min(xd,n*2)}}var Dl=J(!0),Ga;document.addEventListener("visibilitychange",
()=>{clearTimeout(Ga),document.visibilityState==="visible"?Dl.value=!0:Ga=setTimeout(()=>Dl.value=!1,kd)});function Ad(){
return dn.value!==void 0&&tn!==void 0&&ir(Za(lt.value),tn)<0}function eu(){let e=tt(()=>it.value.is==="up");Qe(()=>{e.value&&
Xa?.()});let t=tt(()=>Pe.value==="in"&&ze.value!==void 0),n="";Qe(()=>{let i=lt.value;if(!t.value){mn.value="off",Zt(ja);
return}if(dn.value,(i!==n||Zt(Ad))&&Zt(ja),n=i,!Dl.value){mn.value="resting";return}let o=new AbortController;return Zt(
()=>{Pd(i,o.signal)}),()=>o.abort()})}var Jn=J("");async function $d(e,t){let n=t;for(let i=0;i<yd&&n!=="0";++i){let o=or(
n,Ua),s=`/v1/queues/${e}/events?after=${o}&limit=${Ua}`,a=await At(s);nn.value=o;let c=a.events.filter(p=>ir(p.id,n)<=0);
if(c.length>0)return c;n=o}return[]}async function tu(){let e=nn.value,t=lt.value;if(!(e===void 0||Jn.value==="asking")){
Jn.value="asking";try{let n=await $d(t,e);if(t!==lt.value)return;Ri=Math.min(_o,Math.max(Ri,Je.value.length+n.length)),Je.
value=[...Je.value,...n.reverse()].slice(0,_o),Jn.value=n.length>0||nn.value==="0"?"":"none"}catch{Jn.value="failed"}}}var Dd=String.raw`\u0000-\u001f\u007f-\u009f`,Ld=String.raw`\u061c\u200b-\u200f\u2028-\u202e\u2060-\u2069\ufeff`,Nd=new RegExp(
`[${Dd}${Ld}]`,"g");function Rd(e){let t=e.charCodeAt(0);return t<32?String.fromCharCode(9216+t):t===127?"␡":`<U+${t.toString(
16).toUpperCase().padStart(4,"0")}>`}function _e(e){return e.replace(Nd,Rd)}function G(e){let t=String(e);return/^-?\d+$/.test(t)?t.replace(/\B(?=(\d{3})+$)/g," "):t}function $t(e){let t=["B","K\
iB","MiB","GiB","TiB","PiB"],n=Number(e),i=0;for(;n>=1024&&i+1<t.length;++i)n/=1024;return`${i===0?n:n.toFixed(1)} ${t[i]}`}
function hn(e){let t=Math.max(0,Math.round(e));if(t<60)return`${t} s`;if(t<3600)return`${Math.floor(t/60)} min ${t%60}\
 s`;if(t<86400)return`${Math.floor(t/3600)} h ${Math.floor(t%3600/60)} min`;let n=Math.floor(t/86400),i=Math.floor(t%
86400/3600);return n>=100?`${G(n)} d`:`${n} d ${i} h`}function nu(e){return hn(e).replace(/ 0\u00a0\w+$/,"")}function Ll(...e){
let t=Math.max(...e)<1,n=t?" /min":" /s";return i=>{let o=t?i*60:i;return o===0?`0${n}`:o>=100?`${G(Math.round(o))}${n}`:
`${o.toFixed(o<1?2:1)}${n}`}}function wo(e){return String(e).padStart(2,"0")}function ot(e,t){let n=new Date(Number(e)*1e3);
return Number.isNaN(n.getTime())||n.getUTCFullYear()>9999?`${e} s`:t==="utc"?n.toISOString().slice(0,19).replace("T"," "):
`${n.getFullYear()}-${wo(n.getMonth()+1)}-${wo(n.getDate())} ${wo(n.getHours())}:${wo(n.getMinutes())}:${wo(n.getSeconds())}`}
function dr(e,t){return ot(e/1e3,t).slice(11)}function iu(e,t,n=Date.now()/1e3){let i=ot(e,t),o=ot(n,t).slice(0,10);return i.
startsWith(o)?i.slice(11):i.slice(0,10)}function Fi(e){return hn(Date.now()/1e3-Number(e))}var pr=J("");function gn(e){pr.value=e===pr.value?`${e} `:e}var Od=Symbol.for("pv"),Fd=0;function l(e,t,n,i,o,s){t||(t={});var a,c,p=t;if("ref"in p&&typeof e!="function")for(c in p={},t)c=="ref"?a=t[c]:p[c]=t[c];
var m={type:e,props:p,key:n,ref:a,__k:null,__:null,__b:0,__e:null,__c:null,constructor:Od,__v:--Fd,__i:-1,__u:0};return(o||
s)&&(m.__source=o,m.__self=s),oe.vnode&&oe.vnode(m),m}function mr({open:e,title:t,onClose:n,children:i}){let o=Re(null),s=ma();return Ce(()=>{e&&!o.current?.open&&o.current?.
showModal(),e||o.current?.close()},[e]),l("dialog",{ref:o,"aria-labelledby":s,onClose:n,children:[l("h2",{id:s,children:t}),
e?i:null]})}var Id=10*6e4,Hd={error:"bad",warning:"warn"};function zd({findings:e}){return l("table",{class:"data findings",children:[
l("thead",{children:l("tr",{children:[l("th",{scope:"col",children:"level"}),l("th",{scope:"col",children:"code"}),l("th",
{scope:"col",children:"what was found"})]})}),l("tbody",{children:e.map((t,n)=>l("tr",{children:[l("td",{children:l("spa\
n",{class:`badge ${Hd[t.level]??""}`,children:t.level})}),l("td",{class:"figure",children:t.code}),l("td",{class:"wide",
children:_e(t.message)})]},n))})]})}function ou(e){let t=e.findings.length,n=e.checked==="database"?"The database is":"T\
he queues are";if(t===0)return`${n} in order: nothing was found.`;let i=`${G(t)} finding${t===1?"":"s"}`;return e.fix?e.
remaining===0?`${i}; nothing remains to be repaired.`:`${i}; ${G(e.remaining)} could not be repaired.`:`${i}. Nothing wa\
s changed.`}function Vd({report:e,at:t}){let n=e.findings.length===0||e.fix&&e.remaining===0;return l(me,{children:[l("p",
{class:n?"verdict ok":"verdict bad","data-testid":"verdict",children:[ou(e)," ",l("span",{class:"muted",children:ot(t,Ve.
value)})]}),e.findings.length>0?l(zd,{findings:e.findings}):null]})}function qd(){let e=Pn(!1),t=Pn(void 0),n=async i=>{
e.value=!0;let o=()=>Date.now()/1e3;try{let a=await At("/v1/check",{method:"POST",body:{fix:i},patience:Id});t.value={report:a,
at:o()},gn(ou(a))}catch(s){t.value={failure:s instanceof Error?s.message:String(s),at:o()}}e.value=!1};return{busy:e.value,
done:t.value,run:n}}function Wd({open:e,answer:t}){return l(mr,{open:e,title:"Repair the queues?",onClose:()=>t(!1),children:[
l("p",{children:"Rows filed under a wrong id get a new one. Rows whose event string cannot be read are deleted. This can\
not be undone: copy the database before, should anybody want to look at them."}),l("div",{class:"actions",children:[l("b\
utton",{type:"button",onClick:()=>t(!1),children:"Leave as it is"}),l("button",{type:"button",class:"danger",onClick:()=>t(
!0),children:"Repair"})]})]})}function Ud(){let e=Pn(!1),{busy:t,done:n,run:i}=qd(),o=a=>{e.value=!1,a&&i(!0)},s=n?.report&&
n.report.findings.length>0&&!n.report.fix;return l(me,{children:[l("div",{class:"actions start",children:[l("button",{type:"\
button",class:"primary",disabled:t,onClick:()=>i(!1),children:t?"Looking …":"Look for damage"}),s?l("button",{type:"bu\
tton",class:"danger",disabled:t,onClick:()=>e.value=!0,children:"Repair …"}):null]}),n?.failure?l("p",{class:"banner b\
ad",role:"alert",children:n.failure}):null,n?.report?l(Vd,{report:n.report,at:n.at}):null,l(Wd,{open:e.value,answer:o})]})}
function ru(){return l("section",{class:"card","aria-labelledby":"check-title",children:[l("h2",{id:"check-title",children:"\
Check"}),l("p",{class:"muted",children:["Looks through all queues for events that cannot be read or are filed under a wr\
ong id. Looking changes nothing; a repair asks first.",en.value?" In cluster mode this is about the database, the copy t\
o fall back to: the cluster keeps its queues itself.":""]}),lr("admin")?l(Ud,{}):l("p",{children:"This needs the role ad\
min."})]})}function ei({name:e,value:t,most:n,text:i}){let o=n>0?Math.min(1,Math.max(0,t/n)):0,s=o>=.9?"bad":o>=.7?"warn":"ok";return l(
"div",{class:`meter ${s}`,children:[l("div",{class:"meter-text",children:[l("span",{children:e}),l("span",{class:"figure",
children:i})]}),l("div",{class:"bar",role:"meter","aria-label":e,"aria-valuemin":0,"aria-valuemax":n,"aria-valuenow":Math.
min(t,n),"aria-valuetext":i,children:l("div",{style:{width:`${100*o}%`}})})]})}function ti({name:e,text:t}){return l("di\
v",{class:"meter",children:l("div",{class:"meter-text",children:[l("span",{children:e}),l("span",{class:"figure muted",children:t})]})})}function Bd({member:e}){let{databaseBytes:t,quotaBytes:n,databaseBytesInUse:i}=e,o="Database";return n===0?l(ti,{name:o,
text:$t(t)}):l(me,{children:[l(ei,{name:o,value:t,most:n,text:`${$t(t)} of ${$t(n)}`}),l("p",{class:"note",children:[$t(
i)," in use"]})]})}function Kd({member:e}){let t=e.reachable?e.leader?"leader":"member":"not reachable",n=e.reachable?e.
leader?"accent":"":"bad";return l("li",{class:"card",children:[l("div",{class:"card-head",children:[l("h3",{children:_e(
e.name||e.endpoint)}),l("span",{class:`badge ${n}`,children:t})]}),e.name?l("p",{class:"muted",children:[_e(e.endpoint),
", version ",_e(e.version)]}):null,e.reachable?l(Bd,{member:e}):null,e.failure?l("p",{class:"problem",children:_e(e.failure)}):
null]})}function jd(e){let t=e.filter(o=>o.reachable),n=Math.floor(e.length/2)+1,i=t.some(o=>o.leader)?"":" None of them\
 leads.";return`${t.length} of ${e.length} members answer; ${n} are needed.${i}`}function lu(){let e=en.value;return e?l(
"section",{"aria-labelledby":"cluster-title",children:[l("h2",{id:"cluster-title",children:"Cluster"}),l("p",{class:"pag\
e-note","data-testid":"quorum",children:jd(e.members)}),e.failure?l("p",{class:"banner bad",role:"alert",children:_e(e.failure)}):
null,e.alarms.map(t=>l("p",{class:"banner warn",children:[l("strong",{children:"Alarm:"})," ",_e(t)]},t)),l("ul",{class:"\
members",children:e.members.map(t=>l(Kd,{member:t},t.endpoint))})]}):l("section",{class:"card","aria-labelledby":"cluste\
r-title",children:[l("h2",{id:"cluster-title",children:"Cluster"}),l("p",{class:"muted",children:"This server keeps its \
queues in its own database; it is in no cluster."})]})}var $n=["legacy","imagerep","lsustatus","serverstatus","capacity","abilities","activity","audit","kelp"];function Gd(e,t){let n=Number(e)/Number(t);return Number.isFinite(n)?`${(100*n).toFixed(1)} % used`:""}var Yd={legacy:e=>[
e.payload],imagerep:e=>[e.path,`lsu ${e.lsu}`,`size ${e.size}`],lsustatus:e=>[e.server,`state ${e.state}`],serverstatus:e=>[
e.server,`state ${e.state}`],capacity:e=>[e.server,Gd(e.used,e.capacity),`used ${G(e.used??"")}`],abilities:e=>[e.server,
`flags 0x${Number(e.flags).toString(16).toUpperCase()}`],activity:e=>[e.msg,`action ${e.action}`,`severity ${e.severity}`],
audit:e=>[e.AUditMSg,`action ${e.action}`],kelp:e=>[e.string,`issue ${e.issue}`,`severity ${e.severity}`]};function hr(e){
let t=Yd[e.kind];if(!t||Object.keys(e.fields).length===0)return{main:e.eventString,details:[]};let[n,...i]=t(e.fields).map(
o=>String(o??""));return{main:n??"",details:i.filter(o=>o!=="")}}function vn({name:e}){return l("span",{class:"kind","data-kind":e,children:e})}function su(e){let t=matchMedia(e),n=J(t.matches);return t.addEventListener("change",()=>n.value=t.matches),n}var au=su(
"(prefers-color-scheme: dark)"),gr=su("(max-width: 640px)");var uu=8,_n=e=>`${e.dsid}/${e.id}`;function Qd({event:e,index:t,height:n,active:i,opened:o,onActive:s}){let{main:a,details:c}=hr(
e);return l("div",{role:"row",class:e.problem?"row damaged":"row","aria-rowindex":t+2,"aria-selected":o,tabIndex:i?0:-1,
"data-key":_n(e),style:{transform:`translateY(${t*n}px)`,height:`${n}px`},onFocus:s,onClick:()=>Di(String(e.dsid),String(
e.id),!1),children:[l("span",{role:"gridcell",class:"id",children:e.id}),l("span",{role:"gridcell",class:"when",children:ot(
e.date,Ve.value)}),l("span",{role:"gridcell",children:l(vn,{name:e.kind})}),l("span",{role:"gridcell",class:"what",children:[
e.problem?l("strong",{class:"problem",children:[_e(e.problem)," "]}):null,_e(a),c.map(p=>l("span",{class:"detail",children:_e(
p)},p))]})]})}var Jd={ArrowDown:e=>e+1,ArrowUp:e=>e-1,j:e=>e+1,k:e=>e-1,PageDown:(e,t)=>e+t,PageUp:(e,t)=>e-t,Home:()=>0,
End:(e,t,n)=>n};function Zd(e,t){let n=Re(null),[i,o]=Jt({top:0,height:600}),s=Re(void 0),a=()=>{let p=n.current;if(!p)return;
let m=Math.floor(p.scrollTop/t),g=e[m],_=p.scrollTop-m*t;s.current=p.scrollTop>0&&g?{key:_n(g),offset:_}:void 0,o({top:p.
scrollTop,height:p.clientHeight})},c=Re(a);return c.current=a,gl(()=>{if(!n.current)return;let p=new ResizeObserver(()=>c.
current());return p.observe(n.current),()=>p.disconnect()},[]),gl(()=>{let p=s.current,m=p?e.findIndex(g=>_n(g)===p.key):
-1;p&&m>=0&&n.current&&(n.current.scrollTop=m*t+p.offset),c.current()},[e,t]),{place:n,sight:i,look:a}}function Xd(e,t,n,i){
let o=Math.max(0,Math.floor(e.top/t)-uu),s=Math.min(n,Math.ceil((e.top+e.height)/t)+uu),a=Array.from({length:Math.max(0,
s-o)},(c,p)=>o+p);return i>=s?a.push(i):i>=0&&i<o&&a.unshift(i),a}function cu(e,t){return e?.querySelector(`[data-key="${t}\
"]`)??null}function fu({rows:e,empty:t}){let n=gr.value?52:30,{place:i,sight:o,look:s}=Zd(e,n),[a,c]=Jt(""),p=un.value?`${un.
value.dsid}/${un.value.id}`:"",m=e.findIndex(x=>_n(x)===a),g=m>=0?m:Math.min(e.length-1,Math.floor(o.top/n)),_=Re("");Ce(
()=>{let x=_.current;_.current=p,p?c(p):x&&cu(i.current,x)?.focus({preventScroll:!0})},[p]);let y=x=>{let E=e[x],M=i.current;
if(!E||!M)return;c(_n(E));let A=n;x*n<M.scrollTop&&(M.scrollTop=x*n);let w=(x+1)*n+A-M.clientHeight;w>M.scrollTop&&(M.scrollTop=
w),requestAnimationFrame(()=>{cu(M,_n(E))?.focus({preventScroll:!0})}),p&&Di(String(E.dsid),String(E.id),!1)},v=x=>{if(x.
ctrlKey||x.metaKey||x.altKey)return;let E=e[g];if(x.key==="Enter"&&E){x.preventDefault(),Di(String(E.dsid),String(E.id));
return}let M=Jd[x.key];if(!M||e.length===0)return;x.preventDefault();let A=Math.max(1,Math.floor(o.height/n)-2);y(Math.min(
e.length-1,Math.max(0,M(g,A,e.length-1))))};return l("div",{ref:i,class:"grid",role:"grid","aria-label":"Events, newest \
first","aria-rowcount":e.length+1,style:{"--id-width":`${String(e[0]?.id??"").length}ch`},onScroll:s,onKeyDown:v,children:[
l("div",{role:"row",class:"row head","aria-rowindex":1,children:[l("span",{role:"columnheader",class:"id",children:"id"}),
l("span",{role:"columnheader",children:["time",Ve.value==="utc"?" (UTC)":""]}),l("span",{role:"columnheader",children:"k\
ind"}),l("span",{role:"columnheader",children:"event"})]}),l("div",{role:"rowgroup",class:"rows",style:{height:`${e.length*
n}px`},children:Xd(o,n,e.length,g).map(x=>{let E=e[x];return E?l(Qd,{event:E,index:x,height:n,active:x===g,opened:_n(E)===
p,onActive:()=>c(_n(E))},_n(E)):null})}),e.length===0?l("p",{class:"empty",children:t}):null]})}var ep={mark:"M2 3.5h12M2 8h12M2 12.5h7",auto:"M8 2.5a5.5 5.5 0 1 0 0 11zM8 2.5a5.5 5.5 0 0 1 0 11",light:"M8 5.2a2.8 2.\
8 0 1 1 0 5.6 2.8 2.8 0 0 1 0-5.6M8 1v1.6M8 13.4V15M1 8h1.6M13.4 8H15M3 3l1.2 1.2M11.8 11.8 13 13M13 3l-1.2 1.2M4.2 11.8\
 3 13",dark:"M13.5 9.6A5.8 5.8 0 0 1 6.4 2.5a5.8 5.8 0 1 0 7.1 7.1z",help:"M5.9 6.1a2.1 2.1 0 1 1 3 1.9c-.6.3-.9.7-.9 1.\
4M8 11.4v.6M8 1.8a6.2 6.2 0 1 1 0 12.4A6.2 6.2 0 0 1 8 1.8",close:"M4 4l8 8M12 4l-8 8",pause:"M5.5 3.5v9M10.5 3.5v9",play:"\
M5 3l8 5-8 5z"};function Dn({name:e}){return l("svg",{class:`glyph ${e}`,viewBox:"0 0 16 16","aria-hidden":"true",children:l(
"path",{d:ep[e]})})}var Ii=J(!1),xo=J(!1),pu=[["1 … 6","go to a view"],["/","search in the events"],["p","pause the list of events, or go \
on"],["↑ ↓ or k j","move in the list of events"],["Page ↑ ↓, Home, End","move further"],["Enter","open the event"],
["Esc","close the event, or this help"],["c","copy the event string"],["t","theme: as the system, light, dark"],["u","ti\
mes: local or UTC"],["?","this help"]];function tp(){Yn("events"),xo.value=!0}function np(){document.getElementById("cop\
y-event-string")?.click()}var ip={"/":tp,"?":()=>Ii.value=!0,c:np,p:()=>Xt.value==="events"&&fr(),t:ar,u:za};function op(e){
return e instanceof HTMLElement&&e.matches("input, textarea, select")}function du(e){if(e.defaultPrevented||e.ctrlKey||e.
metaKey||e.altKey||Pe.value!=="in"||document.querySelector("dialog[open]"))return;if(e.key==="Escape"&&un.value){nr();return}
if(op(e.target)||vo.value==="off")return;let t=po[Number(e.key)-1],n=t?()=>Yn(t):ip[e.key];n&&(e.preventDefault(),n())}function mu(){
return addEventListener("keydown",du),()=>removeEventListener("keydown",du)}async function rp(e,t){try{return await navigator.clipboard.writeText(e),"Copied"}catch{let n=t.closest(".card-head")?.nextElementSibling;
return n&&getSelection()?.selectAllChildren(n),"Selected: press Ctrl+C"}}function Nl({text:e,name:t,id:n}){let[i,o]=Jt("");
return Ce(()=>{if(!i)return;let s=setTimeout(()=>o(""),2e3);return()=>clearTimeout(s)},[i]),l("button",{type:"button",id:n,
onClick:async s=>{let a=await rp(e,s.currentTarget);o(a),gn(a)},children:i||t})}function lp({dsid:e,id:t}){let[n,i]=Jt(()=>{let o=Je.peek().find(s=>String(s.id)===t&&String(s.dsid)===e);return o?{event:o}:
{}});return Ce(()=>{n.event||At(`/v1/queues/${e}/events/${t}`).then(o=>i({event:o}),o=>{let a=o instanceof nt&&o.status===
404?"This event is not in the queue (any more).":o.message;i({failure:a})})},[]),n}var sp=new Set(["time","date"]);function ap({
name:e,value:t}){let n=typeof t=="number"||up(t);return sp.has(e)&&n?l(me,{children:[String(t),l("div",{class:"muted",children:[
ot(t,"utc")," UTC"]})]}):l(me,{children:n?G(t):_e(String(t))})}function up(e){return typeof e=="string"&&/^\d{16,20}$/.test(
e)}function cp({event:e}){let t=Ht.value?.kinds[e.kind]?.fields??[],n=new Map(t.map(i=>[i.key,i.help]));return l("dl",{class:"\
fields",children:Object.entries(e.fields).map(([i,o])=>l("div",{children:[l("dt",{title:n.get(i),children:_e(i)}),l("dd",
{children:l(ap,{name:i,value:o})})]},i))})}function fp({event:e}){return l("dl",{class:"fields",children:[l("div",{children:[
l("dt",{children:"kind"}),l("dd",{children:[l(vn,{name:e.kind})," ",l("span",{class:"muted",children:["type ",e.type]})]})]}),
l("div",{children:[l("dt",{children:"queue"}),l("dd",{children:String(e.dsid)==="0"?"global queue":`data selection ${e.dsid}`})]}),
l("div",{children:[l("dt",{children:"date"}),l("dd",{children:[ot(e.date,"local"),l("div",{class:"muted",children:[ot(e.
date,"utc")," UTC"]}),l("div",{class:"muted",children:[Fi(e.date)," ago"]})]})]})]})}function dp({event:e}){return l(me,
{children:[e.problem?l("p",{class:"banner bad",children:_e(e.problem)}):null,l(fp,{event:e}),l("h3",{children:"Fields"}),
Object.keys(e.fields).length>0?l(cp,{event:e}):l("p",{class:"muted",children:"Its event string cannot be taken apart."}),
l("div",{class:"card-head",children:[l("h3",{children:"Event string"}),l(Nl,{id:"copy-event-string",text:e.eventString,name:"\
Copy"})]}),l("pre",{class:"raw","data-testid":"event-string",children:_e(e.eventString)}),e.eventStringHex?l(me,{children:[
l("div",{class:"card-head",children:[l("h3",{children:"Its bytes"}),l(Nl,{text:e.eventStringHex,name:"Copy"})]}),l("p",{
class:"muted",children:"The event string is not UTF-8; this is what is stored."}),l("pre",{class:"raw",children:e.eventStringHex})]}):
null]})}function pp(){let e=Re(null);return Ce(()=>{(wl.takesFocus||gr.peek())&&e.current?.focus({preventScroll:!0})},[]),
e}function hu(e){let{event:t,failure:n}=lp(e),i=pp();return l("aside",{class:"card panel","aria-labelledby":"panel-title",
children:[l("div",{class:"card-head",children:[l("h2",{id:"panel-title",ref:i,tabIndex:-1,children:["Event ",e.id]}),l("\
button",{type:"button",class:"icon","aria-label":"Close",onClick:nr,children:l(Dn,{name:"close"})})]}),t?l(dp,{event:t}):
null,t||n?null:l("p",{class:"muted",children:"Asking for it …"}),n?l("p",{role:"alert",children:n}):null]})}function Hi(e){return String(e.dsid)==="0"?"global queue":e.name?`${e.dsid}: ${_e(e.name)}`:`data selection ${e.dsid}`}var mp={off:["not listening",""],connecting:["connecting",""],live:["live","ok"],broken:["interrupted, trying again","ba\
d"],resting:["resting while this page is hidden",""]};function hp(e){let t=new Set(An.value);t.delete(e)||t.add(e),An.value=
t}function gp(){fr(),gn(zt.value?"The list is paused.":"The list goes on.")}function vp(){let e=ze.value?.queues??[],t=e.
some(n=>String(n.dsid)===lt.value);return l("label",{class:"field",children:[l("span",{class:"unseen",children:"Queue"}),
l("select",{value:lt.value,onChange:n=>lt.value=n.currentTarget.value,children:[t?null:l("option",{value:lt.value,children:[
"data selection ",lt.value]}),e.map(n=>l("option",{value:String(n.dsid),children:Hi(n)},n.dsid))]})]})}function _p(){return l(
"fieldset",{class:"choices kinds",children:[l("legend",{class:"unseen",children:"Kinds shown"}),l("button",{type:"button",
"aria-pressed":An.value.size===0,onClick:()=>An.value=new Set,children:"all kinds"}),$n.map(e=>l("button",{type:"button",
class:"kind","data-kind":e,"aria-pressed":An.value.has(e),onClick:()=>hp(e),children:e},e))]})}function bp(){let[e,t]=mp[mn.
value];if(!zt.value&&mn.value==="broken"&&bo.value)return l("span",{class:"state bad",children:["interrupted: ",_e(bo.value)]});
if(!zt.value)return l("span",{class:`state ${t}`,children:e});let n=Xn.value>0?` and ${G(Xn.value)} more`:"";return l("s\
pan",{class:"state warn",children:["paused, ",G(Zn.value.length),n," new"]})}function yp(){let e=Re(null);return Ce(()=>{
xo.value&&e.current?.focus(),xo.value=!1},[xo.value]),l("div",{class:"tools-row",children:[l(vp,{}),l("label",{class:"fi\
eld grow",children:[l("span",{class:"unseen",children:"Search in the events"}),l("input",{ref:e,type:"search",placeholder:"\
Search id or text",value:Oi.value,onInput:t=>Oi.value=t.currentTarget.value,onKeyDown:t=>t.key==="Escape"&&(Oi.value="")})]}),
l("button",{type:"button",class:"with-icon","aria-pressed":zt.value,onClick:gp,children:[l(Dn,{name:zt.value?"play":"pau\
se"})," ",zt.value?"Go on":"Pause"]})]})}var wp={"":"Older events",asking:"Looking …",none:"None found there; look fur\
ther back",failed:"The server did not answer; try again"};function xp(){return Qa.value?l("span",{class:"muted",children:"\
the list holds no more"}):nn.value===void 0||nn.value==="0"?l("span",{class:"muted",children:"all that are stored"}):l("\
button",{type:"button",disabled:Jn.value==="asking",onClick:tu,children:wp[Jn.value]})}function kp(){let e=yo.value.length===
Je.value.length?`${G(Je.value.length)} events`:`${G(yo.value.length)} of ${G(Je.value.length)} events`;return l("div",{class:"\
list-foot",children:[l("span",{"data-testid":"count",children:e}),l(xp,{})]})}function Sp(){return Je.value.length>0?"No\
 event in the list matches.":mn.value==="live"?"No events here; new ones appear as they are stored.":""}function Tp(){let e=`${Oi.
value}|${[...An.value].join()}`;Ce(()=>{if(e==="|")return;let t=setTimeout(()=>gn(`${yo.peek().length} events match.`),800);
return()=>clearTimeout(t)},[e])}function gu(){Tp();let e=un.value;return Ce(()=>{e&&(lt.value=e.dsid)},[e?.dsid]),l("div",
{class:`events ${e?"with-panel":""}`,children:[l("section",{class:"list card","aria-labelledby":"events-title",children:[
l("div",{class:"card-head",children:[l("h2",{id:"events-title",children:"Events"}),l(bp,{})]}),l(yp,{}),l(_p,{}),l(fu,{rows:yo.
value,empty:Sp()}),l(kp,{})]}),e?l(hu,{dsid:e.dsid,id:e.id},`${e.dsid}/${e.id}`):null]})}function Mp({limit:e}){let t=Pl.value?.count??0,n="Length of the global queue";return e===0?l(ti,{name:n,text:`${G(t)}, \
no limit`}):l(ei,{name:n,value:t,most:e,text:`${G(t)} of ${G(e)}`})}function Ep({days:e}){let t=Pl.value?.oldest,n=t===void 0?
0:Math.max(0,Date.now()/1e3-Number(t)),i="Age of its oldest event";if(e===0)return l(ti,{name:i,text:`${hn(n)}, no limit`});
let o=`${hn(n)} of ${G(e)} d`;return l(ei,{name:i,value:Math.round(n),most:e*86400,text:o})}function vu({name:e,value:t,
most:n}){return n?l(ei,{name:e,value:t,most:n,text:`${G(t)} of ${G(n)}`}):l(ti,{name:e,text:G(t)})}function Cp({now:e}){
let t=e.bytes?.diskFree;if(t===void 0)return null;let n=Number(e.bytes?.database??0)+Number(e.bytes?.wal??0);return l(ti,
{name:"Database",text:`${$t(n)}, ${$t(t)} free on its disk`})}function Pp({cluster:e}){let t=e.members.filter(c=>c.quotaBytes>
0),n=c=>c.databaseBytes/c.quotaBytes,[i]=t.sort((c,p)=>n(p)-n(c));if(!i)return null;let{name:o,databaseBytes:s,quotaBytes:a}=i;
return l(ei,{name:`Database of ${_e(o)}`,value:s,most:a,text:`${$t(s)} of ${$t(a)}`})}function vr({now:e}){return l(me,{
children:[l(Mp,{limit:e.countLimit}),l(Ep,{days:e.ageLimitDays}),l(vu,{name:"Connections",value:e.connections,most:Ht.value?.
connections}),l(vu,{name:"Waiting readers",value:e.waiting,most:Ht.value?.waiting}),e.cluster?l(Pp,{cluster:e.cluster}):
l(Cp,{now:e})]})}function ni({name:e,value:t}){return t===void 0?null:l("div",{children:[l("dt",{children:e}),l("dd",{class:"figure",children:t})]})}
var ii=(e,t)=>e===void 0?void 0:e===0?"no limit":t(e);function Ap({known:e}){return l("dl",{class:"fields figures-list",
children:[l(ni,{name:"most events in the global queue",value:ii(e.countLimit,G)}),l(ni,{name:"highest age, in days",value:ii(
e.ageLimitDays,G)}),l(ni,{name:"largest request",value:ii(e.bodyBytes,$t)}),l(ni,{name:"most events in one request",value:ii(
e.batchEvents,G)}),l(ni,{name:"most connections",value:ii(e.connections,G)}),l(ni,{name:"most waiting readers",value:ii(
e.waiting,G)}),l(ni,{name:"requests a second",value:ii(e.requestsPerSecond,G)})]})}function $p({field:e}){return l("tr",
{children:[l("th",{scope:"row",children:l("code",{children:e.key})}),l("td",{children:e.type}),l("td",{children:e.required?
"required":"optional"}),l("td",{class:"figure",children:e.mostBytes?`${G(e.mostBytes)} B`:"–"}),l("td",{class:"wide",
children:e.help??""})]})}function Dp({name:e,summary:t,fields:n}){let i=n.length===1?"1 field":`${n.length} fields`;return l(
"details",{children:[l("summary",{children:[l(vn,{name:e})," ",l("span",{class:"muted",children:t?`${t}, ${i}`:i})]}),l(
"div",{class:"scroll",tabIndex:0,role:"region","aria-label":`Fields of ${e}`,children:l("table",{class:"data",children:[
l("thead",{children:l("tr",{children:[l("th",{scope:"col",children:"field"}),l("th",{scope:"col",children:"type"}),l("th",
{scope:"col",children:"presence"}),l("th",{scope:"col",children:"longest"}),l("th",{scope:"col",children:"meaning"})]})}),
l("tbody",{children:n.map(o=>l($p,{field:o},o.key))})]})})]})}function _u(){let e=ze.value,t=Ht.value;return l("div",{class:"\
columns",children:[l("section",{class:"card","aria-labelledby":"near-title",children:[l("h2",{id:"near-title",children:"\
How near they are"}),e?l(vr,{now:e}):l("p",{class:"muted",children:"Waiting for figures …"})]}),l("section",{class:"ca\
rd","aria-labelledby":"limits-title",children:[l("h2",{id:"limits-title",children:"Limits in force"}),t?l(Ap,{known:t}):
l("p",{class:"muted",children:"Waiting for the limits …"})]}),l("section",{class:"card span","aria-labelledby":"kinds-\
title",children:[l("h2",{id:"kinds-title",children:"What an event may hold"}),Object.entries(t?.kinds??{}).map(([n,{summary:i,
fields:o}])=>l(Dp,{name:n,summary:i,fields:o},n))]})]})}function bu(){let[e,t]=Jt(""),[n,i]=Jt(!1),o=Re(null);return Ce(()=>o.current?.focus(),[]),l("form",{class:"log-in card",
onSubmit:async a=>{a.preventDefault(),i(!0),await Oa(e),i(!1),o.current?.select()},children:[l("h2",{children:"Log in"}),
l("label",{for:"token",children:"Token"}),l("input",{id:"token",ref:o,type:"password",autocomplete:"off",spellcheck:!1,required:!0,
value:e,"aria-invalid":Li.value!=="","aria-describedby":"token-refusal token-help",onInput:a=>t(a.currentTarget.value)}),
l("p",{id:"token-refusal",class:"refusal",role:"alert",children:Li.value}),l("button",{type:"submit",class:"primary",disabled:n,
children:"Log in"}),l("p",{id:"token-help",class:"muted",children:["The server's administrator makes one with",l("br",{}),
l("code",{children:"eventctl token add NAME --role read"}),l("br",{}),"It is kept until this tab is closed."]})]})}var Lp="uplot",Np="u-hz",Rp="u-vt",Op="u-title",Fp="u-wrap",Ip="u-under",Hp="u-over",zp="u-axis",li="u-off",Vp="u-select",
qp="u-cursor-x",Wp="u-cursor-y",Up="u-cursor-pt",Bp="u-legend",Kp="u-live",jp="u-inline",Gp="u-series",Yp="u-marker",yu="\
u-label",Qp="u-value",So="width",To="height";var wu="bottom",zi="left",Rl="right",Zl="#000",xu=Zl+"0",Ol="mousemove",ku="mousedown",Fl="mouseup",Su="mouseenter",Tu="\
mouseleave",Mu="dblclick",Jp="resize",Zp="scroll",Eu="change",xr="dppxchange",Xl="--",ji=typeof window<"u",ql=ji?document:
null,qi=ji?window:null,Xp=ji?navigator:null,ue,_r;function Wl(){let e=devicePixelRatio;ue!=e&&(ue=e,_r&&Bl(Eu,_r,Wl),_r=
matchMedia(`(min-resolution: ${ue-.001}dppx) and (max-resolution: ${ue+.001}dppx)`),si(Eu,_r,Wl),qi.dispatchEvent(new CustomEvent(
xr)))}function wt(e,t){if(t!=null){let n=e.classList;!n.contains(t)&&n.add(t)}}function Ul(e,t){let n=e.classList;n.contains(
t)&&n.remove(t)}function xe(e,t,n){e.style[t]=n+"px"}function Vt(e,t,n,i){let o=ql.createElement(e);return t!=null&&wt(o,
t),n?.insertBefore(o,i),o}function Dt(e,t){return Vt("div",e,t)}var Cu=new WeakMap;function on(e,t,n,i,o){let s="transla\
te("+t+"px,"+n+"px)",a=Cu.get(e);s!=a&&(e.style.transform=s,Cu.set(e,s),t<0||n<0||t>i||n>o?wt(e,li):Ul(e,li))}var Pu=new WeakMap;
function Au(e,t,n){let i=t+n,o=Pu.get(e);i!=o&&(Pu.set(e,i),e.style.background=t,e.style.borderColor=n)}var $u=new WeakMap;
function Du(e,t,n,i){let o=t+""+n,s=$u.get(e);o!=s&&($u.set(e,o),e.style.height=n+"px",e.style.width=t+"px",e.style.marginLeft=
i?-t/2+"px":0,e.style.marginTop=i?-n/2+"px":0)}var es={passive:!0},em={...es,capture:!0};function si(e,t,n,i){t.addEventListener(
e,n,i?em:es)}function Bl(e,t,n,i){t.removeEventListener(e,n,es)}ji&&Wl();function qt(e,t,n,i){let o;n=n||0,i=i||t.length-
1;let s=i<=2147483647;for(;i-n>1;)o=s?n+i>>1:xt((n+i)/2),t[o]<e?n=o:i=o;return e-t[n]<=t[i]-e?n:i}function lc(e){return(n,i,o)=>{
let s=-1,a=-1;for(let c=i;c<=o;c++)if(e(n[c])){s=c;break}for(let c=o;c>=i;c--)if(e(n[c])){a=c;break}return[s,a]}}var sc=e=>e!=
null,ac=e=>e!=null&&e>0,Tr=lc(sc),tm=lc(ac);function nm(e,t,n,i=0,o=!1){let s=o?tm:Tr,a=o?ac:sc;[t,n]=s(e,t,n);let c=e[t],
p=e[t];if(t>-1)if(i==1)c=e[t],p=e[n];else if(i==-1)c=e[n],p=e[t];else for(let m=t;m<=n;m++){let g=e[m];a(g)&&(g<c?c=g:g>
p&&(p=g))}return[c??he,p??-he]}function Mr(e,t,n,i){let o=Ru(e),s=Ru(t);e==t&&(o==-1?(e*=n,t/=n):(e/=n,t*=n));let a=n==10?
bn:uc,c=o==1?xt:Lt,p=s==1?Lt:xt,m=c(a(We(e))),g=p(a(We(t))),_=Wi(n,m),y=Wi(n,g);return n==10&&(m<0&&(_=ge(_,-m)),g<0&&(y=
ge(y,-g))),i||n==2?(e=_*o,t=y*s):(e=pc(e,_),t=Er(t,y)),[e,t]}function ts(e,t,n,i){let o=Mr(e,t,n,i);return e==0&&(o[0]=0),
t==0&&(o[1]=0),o}var ns=.1,Lu={mode:3,pad:ns},Eo={pad:0,soft:null,mode:0},im={min:Eo,max:Eo};function kr(e,t,n,i){return Cr(
n)?Nu(e,t,n):(Eo.pad=n,Eo.soft=i?0:null,Eo.mode=i?3:0,Nu(e,t,im))}function se(e,t){return e??t}function om(e,t,n){for(t=
se(t,0),n=se(n,e.length-1);t<=n;){if(e[t]!=null)return!0;t++}return!1}function Nu(e,t,n){let i=n.min,o=n.max,s=se(i.pad,
0),a=se(o.pad,0),c=se(i.hard,-he),p=se(o.hard,he),m=se(i.soft,he),g=se(o.soft,-he),_=se(i.mode,0),y=se(o.mode,0),v=t-e,x=bn(
v),E=dt(We(e),We(t)),M=bn(E),A=We(M-x);(v<1e-24||A>10)&&(v=0,(e==0||t==0)&&(v=1e-24,_==2&&m!=he&&(s=0),y==2&&g!=-he&&(a=
0)));let w=v||E||1e3,$=bn(w),S=Wi(10,xt($)),Y=w*(v==0?e==0?.1:1:s),O=ge(pc(e-Y,S/10),24),Q=e>=m&&(_==1||_==3&&O<=m||_==2&&
O>=m)?m:he,W=dt(c,O<Q&&e>=Q?Q:Wt(Q,O)),X=w*(v==0?t==0?.1:1:a),q=ge(Er(t+X,S/10),24),P=t<=g&&(y==1||y==3&&q>=g||y==2&&q<=
g)?g:-he,U=Wt(p,q>P&&t<=P?P:dt(P,q));return W==U&&W==0&&(U=100),[W,U]}var rm=new Intl.NumberFormat(ji?Xp.language:"en-US"),
is=e=>rm.format(e),kt=Math,wr=kt.PI,We=kt.abs,xt=kt.floor,qe=kt.round,Lt=kt.ceil,Wt=kt.min,dt=kt.max,Wi=kt.pow,Ru=kt.sign,
bn=kt.log10,uc=kt.log2,lm=(e,t=1)=>kt.sinh(e)*t,Il=(e,t=1)=>kt.asinh(e/t),he=1/0;function Ou(e){return(bn((e^e>>31)-(e>>
31))|0)+1}function Kl(e,t,n){return Wt(dt(e,t),n)}function cc(e){return typeof e=="function"}function ne(e){return cc(e)?
e:()=>e}var sm=()=>{},fc=e=>e,dc=(e,t)=>t,am=e=>null,Fu=e=>!0,Iu=(e,t)=>e==t,um=/\.\d*?(?=9{6,}|0{6,})/gm,ai=e=>{if(hc(e)||
Nn.has(e))return e;let t=`${e}`,n=t.match(um);if(n==null)return e;let i=n[0].length-1;if(t.indexOf("e-")!=-1){let[o,s]=t.
split("e");return+`${ai(o)}e${s}`}return ge(e,i)};function oi(e,t){return ai(ge(ai(e/t))*t)}function Er(e,t){return ai(Lt(
ai(e/t))*t)}function pc(e,t){return ai(xt(ai(e/t))*t)}function ge(e,t=0){if(hc(e))return e;let n=10**t,i=e*n*(1+Number.EPSILON);
return qe(i)/n}var Nn=new Map;function mc(e){return((""+e).split(".")[1]||"").length}function Po(e,t,n,i){let o=[],s=i.map(
mc);for(let a=t;a<n;a++){let c=We(a),p=ge(Wi(e,a),c);for(let m=0;m<i.length;m++){let g=e==10?+`${i[m]}e${a}`:i[m]*p,_=(a>=
0?0:c)+(a>=s[m]?0:s[m]),y=e==10?g:ge(g,_);o.push(y),Nn.set(y,_)}}return o}var Co={},os=[],Ui=[null,null],Ln=Array.isArray,
hc=Number.isInteger,cm=e=>e===void 0;function Hu(e){return typeof e=="string"}function Cr(e){let t=!1;if(e!=null){let n=e.
constructor;t=n==null||n==Object}return t}function fm(e){return e!=null&&typeof e=="object"}var dm=Object.getPrototypeOf(
Uint8Array),gc="__proto__";function Bi(e,t=Cr){let n;if(Ln(e)){let i=e.find(o=>o!=null);if(Ln(i)||t(i)){n=Array(e.length);
for(let o=0;o<e.length;o++)n[o]=Bi(e[o],t)}else n=e.slice()}else if(e instanceof dm)n=e.slice();else if(t(e)){n={};for(let i in e)
i!=gc&&(n[i]=Bi(e[i],t))}else n=e;return n}function Oe(e){let t=arguments;for(let n=1;n<t.length;n++){let i=t[n];for(let o in i)
o!=gc&&(Cr(e[o])?Oe(e[o],Bi(i[o])):e[o]=Bi(i[o]))}return e}var pm=0,mm=1,hm=2;function gm(e,t,n){for(let i=0,o,s=-1;i<t.
length;i++){let a=t[i];if(a>s){for(o=a-1;o>=0&&e[o]==null;)e[o--]=null;for(o=a+1;o<n&&e[o]==null;)e[s=o++]=null}}}function vm(e,t){
if(ym(e)){let a=e[0].slice();for(let c=1;c<e.length;c++)a.push(...e[c].slice(1));return wm(a[0])||(a=bm(a)),a}let n=new Set;
for(let a=0;a<e.length;a++){let p=e[a][0],m=p.length;for(let g=0;g<m;g++)n.add(p[g])}let i=[Array.from(n).sort((a,c)=>a-
c)],o=i[0].length,s=new Map;for(let a=0;a<o;a++)s.set(i[0][a],a);for(let a=0;a<e.length;a++){let c=e[a],p=c[0];for(let m=1;m<
c.length;m++){let g=c[m],_=Array(o).fill(void 0),y=t?t[a][m]:mm,v=[];for(let x=0;x<g.length;x++){let E=g[x],M=s.get(p[x]);
E===null?y!=pm&&(_[M]=E,y==hm&&v.push(M)):_[M]=E}gm(_,v,o),i.push(_)}}return i}var _m=typeof queueMicrotask>"u"?e=>Promise.
resolve().then(e):queueMicrotask;function bm(e){let t=e[0],n=t.length,i=Array(n);for(let s=0;s<i.length;s++)i[s]=s;i.sort(
(s,a)=>t[s]-t[a]);let o=[];for(let s=0;s<e.length;s++){let a=e[s],c=Array(n);for(let p=0;p<n;p++)c[p]=a[i[p]];o.push(c)}
return o}function ym(e){let t=e[0][0],n=t.length;for(let i=1;i<e.length;i++){let o=e[i][0];if(o.length!=n)return!1;if(o!=
t){for(let s=0;s<n;s++)if(o[s]!=t[s])return!1}}return!0}function wm(e,t=100){let n=e.length;if(n<=1)return!0;let i=0,o=n-
1;for(;i<=o&&e[i]==null;)i++;for(;o>=i&&e[o]==null;)o--;if(o<=i)return!0;let s=dt(1,xt((o-i+1)/t));for(let a=e[i],c=i+s;c<=
o;c+=s){let p=e[c];if(p!=null){if(p<=a)return!1;a=p}}return!0}var vc=["January","February","March","April","May","June",
"July","August","September","October","November","December"],_c=["Sunday","Monday","Tuesday","Wednesday","Thursday","Fri\
day","Saturday"];function bc(e){return e.slice(0,3)}var xm=_c.map(bc),km=vc.map(bc),Sm={MMMM:vc,MMM:km,WWWW:_c,WWW:xm};function ko(e){
return(e<10?"0":"")+e}function Tm(e){return(e<10?"00":e<100?"0":"")+e}var Mm={YYYY:e=>e.getFullYear(),YY:e=>(e.getFullYear()+
"").slice(2),MMMM:(e,t)=>t.MMMM[e.getMonth()],MMM:(e,t)=>t.MMM[e.getMonth()],MM:e=>ko(e.getMonth()+1),M:e=>e.getMonth()+
1,DD:e=>ko(e.getDate()),D:e=>e.getDate(),WWWW:(e,t)=>t.WWWW[e.getDay()],WWW:(e,t)=>t.WWW[e.getDay()],HH:e=>ko(e.getHours()),
H:e=>e.getHours(),h:e=>{let t=e.getHours();return t==0?12:t>12?t-12:t},AA:e=>e.getHours()>=12?"PM":"AM",aa:e=>e.getHours()>=
12?"pm":"am",a:e=>e.getHours()>=12?"p":"a",mm:e=>ko(e.getMinutes()),m:e=>e.getMinutes(),ss:e=>ko(e.getSeconds()),s:e=>e.
getSeconds(),fff:e=>Tm(e.getMilliseconds())};function rs(e,t){t=t||Sm;let n=[],i=/\{([a-z]+)\}|[^{]+/gi,o;for(;o=i.exec(
e);)n.push(o[0][0]=="{"?Mm[o[1]]:o[0]);return s=>{let a="";for(let c=0;c<n.length;c++)a+=typeof n[c]=="string"?n[c]:n[c](
s,t);return a}}var Em=new Intl.DateTimeFormat().resolvedOptions().timeZone;function Cm(e,t){let n;return t=="UTC"||t=="E\
tc/UTC"?n=new Date(+e+e.getTimezoneOffset()*6e4):t==Em?n=e:(n=new Date(e.toLocaleString("en-US",{timeZone:t})),n.setMilliseconds(
e.getMilliseconds())),n}var yc=e=>e%1==0,Sr=[1,2,2.5,5],Pm=Po(10,-32,0,Sr),wc=Po(10,0,32,Sr),Am=wc.filter(yc),ri=Pm.concat(
wc),ls=`
`,xc="{YYYY}",zu=ls+xc,kc="{M}/{D}",Mo=ls+kc,br=Mo+"/{YY}",Sc="{aa}",$m="{h}:{mm}",Vi=$m+Sc,Vu=ls+Vi,qu=":{ss}",fe=null;
function Tc(e){let t=e*1e3,n=t*60,i=n*60,o=i*24,s=o*30,a=o*365,p=(e==1?Po(10,0,3,Sr).filter(yc):Po(10,-3,0,Sr)).concat([
t,t*5,t*10,t*15,t*30,n,n*5,n*10,n*15,n*30,i,i*2,i*3,i*4,i*6,i*8,i*12,o,o*2,o*3,o*4,o*5,o*6,o*7,o*8,o*9,o*10,o*15,s,s*2,s*
3,s*4,s*6,a,a*2,a*5,a*10,a*25,a*50,a*100]),m=[[a,xc,fe,fe,fe,fe,fe,fe,1],[o*28,"{MMM}",zu,fe,fe,fe,fe,fe,1],[o,kc,zu,fe,
fe,fe,fe,fe,1],[i,"{h}"+Sc,br,fe,Mo,fe,fe,fe,1],[n,Vi,br,fe,Mo,fe,fe,fe,1],[t,qu,br+" "+Vi,fe,Mo+" "+Vi,fe,Vu,fe,1],[e,qu+
".{fff}",br+" "+Vi,fe,Mo+" "+Vi,fe,Vu,fe,1]];function g(_){return(y,v,x,E,M,A)=>{let w=[],$=M>=a,S=M>=s&&M<a,Y=_(x),O=ge(
Y*e,3),Q=Hl(Y.getFullYear(),$?0:Y.getMonth(),S||$?1:Y.getDate()),W=ge(Q*e,3);if(S||$){let X=S?M/s:0,q=$?M/a:0,P=O==W?O:ge(
Hl(Q.getFullYear()+q,Q.getMonth()+X,1)*e,3),U=new Date(qe(P/e)),L=U.getFullYear(),K=U.getMonth();for(let V=0;P<=E;V++){let ie=Hl(
L+q*V,K+X*V,1),z=ie-_(ge(ie*e,3));P=ge((+ie+z)*e,3),P<=E&&w.push(P)}}else{let X=M>=o?o:M,q=xt(x)-xt(O),P=W+q+Er(O-W,X);w.
push(P);let U=_(P),L=U.getHours()+U.getMinutes()/n+U.getSeconds()/i,K=M/i,V=y.axes[v]._space,ie=A/V;for(;P=ge(P+M,e==1?0:
3),!(P>E);)if(K>1){let z=xt(ge(L+K,6))%24,re=_(P).getHours()-z;re>1&&(re=-1),P-=re*i,L=(L+K)%24;let de=w[w.length-1];ge(
(P-de)/M,3)*ie>=.7&&w.push(P)}else w.push(P)}return w}}return[p,m,g]}var[Dm,Lm,Nm]=Tc(1),[Rm,Om,Fm]=Tc(.001);Po(2,-53,53,
[1]);function Wu(e,t){return e.map(n=>n.map((i,o)=>o==0||o==8||i==null?i:t(o==1||n[8]==0?i:n[1]+i)))}function Uu(e,t){return(n,i,o,s,a)=>{
let c=t.find(x=>a>=x[0])||t[t.length-1],p,m,g,_,y,v;return i.map(x=>{let E=e(x),M=E.getFullYear(),A=E.getMonth(),w=E.getDate(),
$=E.getHours(),S=E.getMinutes(),Y=E.getSeconds(),O=M!=p&&c[2]||A!=m&&c[3]||w!=g&&c[4]||$!=_&&c[5]||S!=y&&c[6]||Y!=v&&c[7]||
c[1];return p=M,m=A,g=w,_=$,y=S,v=Y,O(E)})}}function Im(e,t){let n=rs(t);return(i,o,s,a,c)=>o.map(p=>n(e(p)))}function Hl(e,t,n){
return new Date(e,t,n)}function Bu(e,t){return t(e)}var Hm="{YYYY}-{MM}-{DD} {h}:{mm}{aa}";function Ku(e,t){return(n,i,o,s)=>s==
null?Xl:t(e(i))}function zm(e,t){let n=e.series[t];return n.width?n.stroke(e,t):n.points.width?n.points.stroke(e,t):null}
function Vm(e,t){return e.series[t].fill(e,t)}var qm={show:!0,live:!0,isolate:!1,mount:sm,markers:{show:!0,width:2,stroke:zm,
fill:Vm,dash:"solid"},idx:null,idxs:null,values:[]};function Wm(e,t){let n=e.cursor.points,i=Dt(),o=n.size(e,t);xe(i,So,
o),xe(i,To,o);let s=o/-2;xe(i,"marginLeft",s),xe(i,"marginTop",s);let a=n.width(e,t,o);return a&&xe(i,"borderWidth",a),i}
function Um(e,t){let n=e.series[t].points;return n._fill||n._stroke}function Bm(e,t){let n=e.series[t].points;return n._stroke||
n._fill}function Km(e,t){return e.series[t].points.size}var zl=[0,0];function jm(e,t,n){return zl[0]=t,zl[1]=n,zl}function yr(e,t,n,i=!0){
return o=>{o.button==0&&(!i||o.target==t)&&n(o)}}function Vl(e,t,n,i=!0){return o=>{(!i||o.target==t)&&n(o)}}var Gm={show:!0,
x:!0,y:!0,lock:!1,move:jm,points:{one:!1,show:Wm,size:Km,width:0,stroke:Bm,fill:Um},bind:{mousedown:yr,mouseup:yr,click:yr,
dblclick:yr,mousemove:Vl,mouseleave:Vl,mouseenter:Vl},drag:{setScale:!0,x:!0,y:!1,dist:0,uni:null,click:(e,t)=>{t.stopPropagation(),
t.stopImmediatePropagation()},_x:!1,_y:!1},focus:{dist:(e,t,n,i,o)=>i-o,prox:-1,bias:0},hover:{skip:[void 0],prox:null,bias:0},
left:-10,top:-10,idx:null,dataIdx:null,idxs:null,event:null},Mc={show:!0,stroke:"rgba(0,0,0,0.07)",width:2},ss=Oe({},Mc,
{filter:dc}),Ec=Oe({},ss,{size:10}),Cc=Oe({},Mc,{show:!1}),as='12px system-ui, -apple-system, "Segoe UI", Roboto, "Helve\
tica Neue", Arial, "Noto Sans", sans-serif, "Apple Color Emoji", "Segoe UI Emoji", "Segoe UI Symbol", "Noto Color Emoji"',
Pc="bold "+as,Ac=1.5,ju={show:!0,scale:"x",stroke:Zl,space:50,gap:5,alignTo:1,size:50,labelGap:0,labelSize:30,labelFont:Pc,
side:2,grid:ss,ticks:Ec,border:Cc,font:as,lineGap:Ac,rotate:0},Ym="Value",Qm="Time",Gu={show:!0,scale:"x",auto:!1,sorted:1,
min:he,max:-he,idxs:[]};function Jm(e,t,n,i,o){return t.map(s=>s==null?"":is(s))}function Zm(e,t,n,i,o,s,a){let c=[],p=Nn.
get(o)||0;n=a?n:ge(Er(n,o),p);for(let m=n;m<=i;m=ge(m+o,p))c.push(Object.is(m,-0)?0:m);return c}function jl(e,t,n,i,o,s,a){
let c=[],p=e.scales[e.axes[t].scale].log,m=p==10?bn:uc,g=xt(m(n));o=Wi(p,g),p==10&&(o=ri[qt(o,ri)]);let _=n,y=o*p;p==10&&
(y=ri[qt(y,ri)]);do c.push(_),_=_+o,p==10&&!Nn.has(_)&&(_=ge(_,Nn.get(o))),_>=y&&(o=_,y=o*p,p==10&&(y=ri[qt(y,ri)]));while(_<=
i);return c}function Xm(e,t,n,i,o,s,a){let p=e.scales[e.axes[t].scale].asinh,m=i>p?jl(e,t,dt(p,n),i,o):[p],g=i>=0&&n<=0?
[0]:[];return(n<-p?jl(e,t,dt(p,-i),-n,o):[p]).reverse().map(y=>-y).concat(g,m)}var $c=/./,eh=/[12357]/,th=/[125]/,Yu=/1/,
Gl=(e,t,n,i)=>e.map((o,s)=>t==4&&o==0||s%i==0&&n.test(o.toExponential()[o<0?1:0])?o:null);function nh(e,t,n,i,o){let s=e.
axes[n],a=s.scale,c=e.scales[a],p=e.valToPos,m=s._space,g=p(10,a),_=p(9,a)-g>=m?$c:p(7,a)-g>=m?eh:p(5,a)-g>=m?th:Yu;if(_==
Yu){let y=We(p(1,a)-g);if(y<m)return Gl(t.slice().reverse(),c.distr,_,Lt(m/y)).reverse()}return Gl(t,c.distr,_,1)}function ih(e,t,n,i,o){
let s=e.axes[n],a=s.scale,c=s._space,p=e.valToPos,m=We(p(1,a)-p(2,a));return m<c?Gl(t.slice().reverse(),3,$c,Lt(c/m)).reverse():
t}function oh(e,t,n,i){return i==null?Xl:t==null?"":is(t)}var Qu={show:!0,scale:"y",stroke:Zl,space:30,gap:5,alignTo:1,size:50,
labelGap:0,labelSize:30,labelFont:Pc,side:3,grid:ss,ticks:Ec,border:Cc,font:as,lineGap:Ac,rotate:0};function rh(e,t){let n=3+
(e||1)*2;return ge(n*t,3)}function lh(e,t){let{scale:n,idxs:i}=e.series[0],o=e._data[0],s=e.valToPos(o[i[0]],n,!0),a=e.valToPos(
o[i[1]],n,!0),c=We(a-s),p=e.series[t],m=c/(p.points.space*ue);return i[1]-i[0]<=m}var Ju={scale:null,auto:!0,sorted:0,min:he,
max:-he},Dc=(e,t,n,i,o)=>o,Zu={show:!0,auto:!0,sorted:0,gaps:Dc,alpha:1,facets:[Oe({},Ju,{scale:"x"}),Oe({},Ju,{scale:"y"})]},
Xu={scale:"y",auto:!0,sorted:0,show:!0,spanGaps:!1,gaps:Dc,alpha:1,points:{show:lh,filter:null},values:null,min:he,max:-he,
idxs:[],path:null,clip:null};function sh(e,t,n,i,o){return n/10}var Lc={time:!0,auto:!0,distr:1,log:10,asinh:1,min:null,
max:null,dir:1,ori:0},ah=Oe({},Lc,{time:!1,ori:1}),ec={};function Nc(e,t){let n=ec[e];return n||(n={key:e,plots:[],sub(i){
n.plots.push(i)},unsub(i){n.plots=n.plots.filter(o=>o!=i)},pub(i,o,s,a,c,p,m){for(let g=0;g<n.plots.length;g++)n.plots[g]!=
o&&n.plots[g].pub(i,o,s,a,c,p,m)}},e!=null&&(ec[e]=n)),n}var Ki=1,Yl=2;function ui(e,t,n){let i=e.mode,o=e.series[t],s=i==
2?e._data[t]:e._data,a=e.scales,c=e.bbox,p=s[0],m=i==2?s[1]:s[t],g=i==2?a[o.facets[0].scale]:a[e.series[0].scale],_=i==2?
a[o.facets[1].scale]:a[o.scale],y=c.left,v=c.top,x=c.width,E=c.height,M=e.valToPosH,A=e.valToPosV;return g.ori==0?n(o,p,
m,g,_,M,A,y,v,x,E,Ar,Gi,Dr,Oc,Ic):n(o,p,m,g,_,A,M,v,y,E,x,$r,Yi,fs,Fc,Hc)}function us(e,t){let n=0,i=0,o=se(e.bands,os);
for(let s=0;s<o.length;s++){let a=o[s];a.series[0]==t?n=a.dir:a.series[1]==t&&(a.dir==1?i|=1:i|=2)}return[n,i==1?-1:i==2?
1:i==3?2:0]}function uh(e,t,n,i,o){let s=e.mode,a=e.series[t],c=s==2?a.facets[1].scale:a.scale,p=e.scales[c];return o==-1?
p.min:o==1?p.max:p.distr==3?p.dir==1?p.min:p.max:0}function yn(e,t,n,i,o,s){return ui(e,t,(a,c,p,m,g,_,y,v,x,E,M)=>{let A=a.
pxRound,w=m.dir*(m.ori==0?1:-1),$=m.ori==0?Gi:Yi,S,Y;w==1?(S=n,Y=i):(S=i,Y=n);let O=A(_(c[S],m,E,v)),Q=A(y(p[S],g,M,x)),
W=A(_(c[Y],m,E,v)),X=A(y(s==1?g.max:g.min,g,M,x)),q=new Path2D(o);return $(q,W,X),$(q,O,X),$(q,O,Q),q})}function Pr(e,t,n,i,o,s){
let a=null;if(e.length>0){a=new Path2D;let c=t==0?Dr:fs,p=n;for(let _=0;_<e.length;_++){let y=e[_];if(y[1]>y[0]){let v=y[0]-
p;v>0&&c(a,p,i,v,i+s),p=y[1]}}let m=n+o-p,g=10;m>0&&c(a,p,i-g/2,m,i+s+g)}return a}function ch(e,t,n){let i=e[e.length-1];
i&&i[0]==t?i[1]=n:e.push([t,n])}function cs(e,t,n,i,o,s,a){let c=[],p=e.length;for(let m=o==1?n:i;m>=n&&m<=i;m+=o)if(t[m]===
null){let _=m,y=m;if(o==1)for(;++m<=i&&t[m]===null;)y=m;else for(;--m>=n&&t[m]===null;)y=m;let v=s(e[_]),x=y==_?v:s(e[y]),
E=_-o;v=a<=0&&E>=0&&E<p?s(e[E]):v;let A=y+o;x=a>=0&&A>=0&&A<p?s(e[A]):x,x>=v&&c.push([v,x])}return c}function tc(e){return e==
0?fc:e==1?qe:t=>oi(t,e)}function Rc(e){let t=e==0?Ar:$r,n=e==0?(o,s,a,c,p,m)=>{o.arcTo(s,a,c,p,m)}:(o,s,a,c,p,m)=>{o.arcTo(
a,s,p,c,m)},i=e==0?(o,s,a,c,p)=>{o.rect(s,a,c,p)}:(o,s,a,c,p)=>{o.rect(a,s,p,c)};return(o,s,a,c,p,m=0,g=0)=>{m==0&&g==0?
i(o,s,a,c,p):(m=Wt(m,c/2,p/2),g=Wt(g,c/2,p/2),t(o,s+m,a),n(o,s+c,a,s+c,a+p,m),n(o,s+c,a+p,s,a+p,g),n(o,s,a+p,s,a,g),n(o,
s,a,s+c,a,m),o.closePath())}}var Ar=(e,t,n)=>{e.moveTo(t,n)},$r=(e,t,n)=>{e.moveTo(n,t)},Gi=(e,t,n)=>{e.lineTo(t,n)},Yi=(e,t,n)=>{
e.lineTo(n,t)},Dr=Rc(0),fs=Rc(1),Oc=(e,t,n,i,o,s)=>{e.arc(t,n,i,o,s)},Fc=(e,t,n,i,o,s)=>{e.arc(n,t,i,o,s)},Ic=(e,t,n,i,o,s,a)=>{
e.bezierCurveTo(t,n,i,o,s,a)},Hc=(e,t,n,i,o,s,a)=>{e.bezierCurveTo(n,t,o,i,a,s)};function zc(e){return(t,n,i,o,s)=>ui(t,
n,(a,c,p,m,g,_,y,v,x,E,M)=>{let{pxRound:A,points:w}=a,$,S;m.ori==0?($=Ar,S=Oc):($=$r,S=Fc);let Y=ge(w.width*ue,3),O=(w.size-
w.width)/2*ue,Q=ge(O*2,3),W=new Path2D,X=new Path2D,{left:q,top:P,width:U,height:L}=t.bbox;Dr(X,q-Q,P-Q,U+Q*2,L+Q*2);let K=V=>{
if(p[V]!=null){let ie=A(_(c[V],m,E,v)),z=A(y(p[V],g,M,x));$(W,ie+O,z),S(W,ie,z,O,0,wr*2)}};if(s)s.forEach(K);else for(let V=i;V<=
o;V++)K(V);return{stroke:Y>0?W:null,fill:W,clip:X,flags:Ki|Yl}})}function Vc(e){return(t,n,i,o,s,a)=>{i!=o&&(s!=i&&a!=i&&
e(t,n,i),s!=o&&a!=o&&e(t,n,o),e(t,n,a))}}var fh=Vc(Gi),dh=Vc(Yi);function qc(e){let t=se(e?.alignGaps,0);return(n,i,o,s)=>ui(
n,i,(a,c,p,m,g,_,y,v,x,E,M)=>{[o,s]=Tr(p,o,s);let A=a.pxRound,w=L=>A(_(L,m,E,v)),$=L=>A(y(L,g,M,x)),S,Y;m.ori==0?(S=Gi,Y=
fh):(S=Yi,Y=dh);let O=m.dir*(m.ori==0?1:-1),Q={stroke:new Path2D,fill:null,clip:null,band:null,gaps:null,flags:Ki},W=Q.stroke,
X=!1;if(s-o>=E*4){let L=I=>n.posToVal(I,m.key,!0),K=null,V=null,ie,z,pt,ke=w(c[O==1?o:s]),re=w(c[o]),de=w(c[s]),ee=L(O==
1?re+1:de-1);for(let I=O==1?o:s;I>=o&&I<=s;I+=O){let Fe=c[I],Se=(O==1?Fe<ee:Fe>ee)?ke:w(Fe),ce=p[I];Se==ke?ce!=null?(z=ce,
K==null?(S(W,Se,$(z)),ie=K=V=z):z<K?K=z:z>V&&(V=z)):ce===null&&(X=!0):(K!=null&&Y(W,ke,$(K),$(V),$(ie),$(z)),ce!=null?(z=
ce,S(W,Se,$(z)),K=V=ie=z):(K=V=null,ce===null&&(X=!0)),ke=Se,ee=L(ke+O))}K!=null&&K!=V&&pt!=ke&&Y(W,ke,$(K),$(V),$(ie),$(
z))}else for(let L=O==1?o:s;L>=o&&L<=s;L+=O){let K=p[L];K===null?X=!0:K!=null&&S(W,w(c[L]),$(K))}let[P,U]=us(n,i);if(a.fill!=
null||P!=0){let L=Q.fill=new Path2D(W),K=a.fillTo(n,i,a.min,a.max,P),V=$(K),ie=w(c[o]),z=w(c[s]);O==-1&&([z,ie]=[ie,z]),
S(L,z,V),S(L,ie,V)}if(!a.spanGaps){let L=[];X&&L.push(...cs(c,p,o,s,O,w,t)),Q.gaps=L=a.gaps(n,i,o,s,L),Q.clip=Pr(L,m.ori,
v,x,E,M)}return U!=0&&(Q.band=U==2?[yn(n,i,o,s,W,-1),yn(n,i,o,s,W,1)]:yn(n,i,o,s,W,U)),Q})}function ph(e){let t=se(e.align,
1),n=se(e.ascDesc,!1),i=se(e.alignGaps,0),o=se(e.extend,!1);return(s,a,c,p)=>ui(s,a,(m,g,_,y,v,x,E,M,A,w,$)=>{[c,p]=Tr(_,
c,p);let S=m.pxRound,{left:Y,width:O}=s.bbox,Q=re=>S(x(re,y,w,M)),W=re=>S(E(re,v,$,A)),X=y.ori==0?Gi:Yi,q={stroke:new Path2D,
fill:null,clip:null,band:null,gaps:null,flags:Ki},P=q.stroke,U=y.dir*(y.ori==0?1:-1),L=W(_[U==1?c:p]),K=Q(g[U==1?c:p]),V=K,
ie=K;o&&t==-1&&(ie=Y,X(P,ie,L)),X(P,K,L);for(let re=U==1?c:p;re>=c&&re<=p;re+=U){let de=_[re];if(de==null)continue;let ee=Q(
g[re]),I=W(de);t==1?X(P,ee,L):X(P,V,I),X(P,ee,I),L=I,V=ee}let z=V;o&&t==1&&(z=Y+O,X(P,z,L));let[pt,ke]=us(s,a);if(m.fill!=
null||pt!=0){let re=q.fill=new Path2D(P),de=m.fillTo(s,a,m.min,m.max,pt),ee=W(de);X(re,z,ee),X(re,ie,ee)}if(!m.spanGaps){
let re=[];re.push(...cs(g,_,c,p,U,Q,i));let de=m.width*ue/2,ee=n||t==1?de:-de,I=n||t==-1?-de:de;re.forEach(Fe=>{Fe[0]+=ee,
Fe[1]+=I}),q.gaps=re=m.gaps(s,a,c,p,re),q.clip=Pr(re,y.ori,M,A,w,$)}return ke!=0&&(q.band=ke==2?[yn(s,a,c,p,P,-1),yn(s,a,
c,p,P,1)]:yn(s,a,c,p,P,ke)),q})}function nc(e,t,n,i,o,s,a=he){if(e.length>1){let c=null;for(let p=0,m=1/0;p<e.length;p++)
if(t[p]!==void 0){if(c!=null){let g=We(e[p]-e[c]);g<m&&(m=g,a=We(n(e[p],i,o,s)-n(e[c],i,o,s)))}c=p}}return a}function mh(e){
e=e||Co;let t=se(e.size,[.6,he,1]),n=e.align||0,i=e.gap||0,o=e.radius;o=o==null?[0,0]:typeof o=="number"?[o,0]:o;let s=ne(
o),a=1-t[0],c=se(t[1],he),p=se(t[2],1),m=se(e.disp,Co),g=se(e.each,v=>{}),{fill:_,stroke:y}=m;return(v,x,E,M)=>ui(v,x,(A,w,$,S,Y,O,Q,W,X,q,P)=>{
let U=A.pxRound,L=n,K=i*ue,V=c*ue,ie=p*ue,z,pt;S.ori==0?[z,pt]=s(v,x):[pt,z]=s(v,x);let ke=S.dir*(S.ori==0?1:-1),re=S.ori==
0?Dr:fs,de=S.ori==0?g:(R,ve,Ie,pi,Fn,Bt,In)=>{g(R,ve,Ie,Fn,pi,In,Bt)},ee=se(v.bands,os).find(R=>R.series[0]==x),I=ee!=null?
ee.dir:0,Fe=A.fillTo(v,x,A.min,A.max,I),st=U(Q(Fe,Y,P,X)),Se,ce,Nt,gt=q,Ee=U(A.width*ue),Ut=!1,rn=null,St=null,wn=null,ci=null;
_!=null&&(Ee==0||y!=null)&&(Ut=!0,rn=_.values(v,x,E,M),St=new Map,new Set(rn).forEach(R=>{R!=null&&St.set(R,new Path2D)}),
Ee>0&&(wn=y.values(v,x,E,M),ci=new Map,new Set(wn).forEach(R=>{R!=null&&ci.set(R,new Path2D)})));let{x0:fi,size:Ji}=m;if(fi!=
null&&Ji!=null){L=1,w=fi.values(v,x,E,M),fi.unit==2&&(w=w.map(Ie=>v.posToVal(W+Ie*q,S.key,!0)));let R=Ji.values(v,x,E,M);
Ji.unit==2?ce=R[0]*q:ce=O(R[0],S,q,W)-O(0,S,q,W),gt=nc(w,$,O,S,q,W,gt),Nt=gt-ce+K}else gt=nc(w,$,O,S,q,W,gt),Nt=gt*a+K,ce=
gt-Nt;Nt<1&&(Nt=0),Ee>=ce/2&&(Ee=0),Nt<5&&(U=fc);let Ao=Nt>0,Rn=gt-Nt-(Ao?Ee:0);ce=U(Kl(Rn,ie,V)),Se=(L==0?ce/2:L==ke?0:
ce)-L*ke*((L==0?K/2:0)+(Ao?Ee/2:0));let at={stroke:null,fill:null,clip:null,band:null,gaps:null,flags:0},di=Ut?null:new Path2D,
ln=null;if(ee!=null)ln=v.data[ee.series[1]];else{let{y0:R,y1:ve}=m;R!=null&&ve!=null&&($=ve.values(v,x,E,M),ln=R.values(
v,x,E,M))}let On=z*ce,Z=pt*ce;for(let R=ke==1?E:M;R>=E&&R<=M;R+=ke){let ve=$[R];if(ve==null)continue;if(ln!=null){let mt=ln[R]??
0;if(ve-mt==0)continue;st=Q(mt,Y,P,X)}let Ie=S.distr!=2||m!=null?w[R]:R,pi=O(Ie,S,q,W),Fn=Q(se(ve,Fe),Y,P,X),Bt=U(pi-Se),
In=U(dt(Fn,st)),vt=U(Wt(Fn,st)),Tt=In-vt;if(ve!=null){let mt=ve<0?Z:On,Rt=ve<0?On:Z;Ut?(Ee>0&&wn[R]!=null&&re(ci.get(wn[R]),
Bt,vt+xt(Ee/2),ce,dt(0,Tt-Ee),mt,Rt),rn[R]!=null&&re(St.get(rn[R]),Bt,vt+xt(Ee/2),ce,dt(0,Tt-Ee),mt,Rt)):re(di,Bt,vt+xt(
Ee/2),ce,dt(0,Tt-Ee),mt,Rt),de(v,x,R,Bt-Ee/2,vt,ce+Ee,Tt)}}return Ee>0?at.stroke=Ut?ci:di:Ut||(at._fill=A.width==0?A._fill:
A._stroke??A._fill,at.width=0),at.fill=Ut?St:di,at})}function hh(e,t){let n=se(t?.alignGaps,0);return(i,o,s,a)=>ui(i,o,(c,p,m,g,_,y,v,x,E,M,A)=>{
[s,a]=Tr(m,s,a);let w=c.pxRound,$=z=>w(y(z,g,M,x)),S=z=>w(v(z,_,A,E)),Y,O,Q;g.ori==0?(Y=Ar,Q=Gi,O=Ic):(Y=$r,Q=Yi,O=Hc);let W=g.
dir*(g.ori==0?1:-1),X=$(p[W==1?s:a]),q=X,P=[],U=[];for(let z=W==1?s:a;z>=s&&z<=a;z+=W)if(m[z]!=null){let ke=p[z],re=$(ke);
P.push(q=re),U.push(S(m[z]))}let L={stroke:e(P,U,Y,Q,O,w),fill:null,clip:null,band:null,gaps:null,flags:Ki},K=L.stroke,[
V,ie]=us(i,o);if(c.fill!=null||V!=0){let z=L.fill=new Path2D(K),pt=c.fillTo(i,o,c.min,c.max,V),ke=S(pt);Q(z,q,ke),Q(z,X,
ke)}if(!c.spanGaps){let z=[];z.push(...cs(p,m,s,a,W,$,n)),L.gaps=z=c.gaps(i,o,s,a,z),L.clip=Pr(z,g.ori,x,E,M,A)}return ie!=
0&&(L.band=ie==2?[yn(i,o,s,a,K,-1),yn(i,o,s,a,K,1)]:yn(i,o,s,a,K,ie)),L})}function gh(e){return hh(vh,e)}function vh(e,t,n,i,o,s){
let a=e.length;if(a<2)return null;let c=new Path2D;if(n(c,e[0],t[0]),a==2)i(c,e[1],t[1]);else{let p=Array(a),m=Array(a-1),
g=Array(a-1),_=Array(a-1);for(let y=0;y<a-1;y++)g[y]=t[y+1]-t[y],_[y]=e[y+1]-e[y],m[y]=g[y]/_[y];p[0]=m[0];for(let y=1;y<
a-1;y++)m[y]===0||m[y-1]===0||m[y-1]>0!=m[y]>0?p[y]=0:(p[y]=3*(_[y-1]+_[y])/((2*_[y]+_[y-1])/m[y-1]+(_[y]+2*_[y-1])/m[y]),
isFinite(p[y])||(p[y]=0));p[a-1]=m[a-2];for(let y=0;y<a-1;y++)o(c,e[y]+_[y]/3,t[y]+p[y]*_[y]/3,e[y+1]-_[y]/3,t[y+1]-p[y+
1]*_[y]/3,e[y+1],t[y+1])}return c}var Ql=new Set;function ic(){for(let e of Ql)e.syncRect(!0)}ji&&(si(Jp,qi,ic),si(Zp,qi,
ic,!0),si(xr,qi,()=>{Ze.pxRatio=ue}));var _h=qc(),bh=zc();function oc(e,t,n,i){return(i?[e[0],e[1]].concat(e.slice(2)):[
e[0]].concat(e.slice(1))).map((s,a)=>Jl(s,a,t,n))}function yh(e,t){return e.map((n,i)=>i==0?{}:Oe({},t,n))}function Jl(e,t,n,i){
return Oe({},t==0?n:i,e)}function Wc(e,t,n){return t==null?Ui:[t,n]}var wh=Wc;function xh(e,t,n){return t==null?Ui:kr(t,
n,ns,!0)}function Uc(e,t,n,i){return t==null?Ui:Mr(t,n,e.scales[i].log,!1)}var kh=Uc;function Bc(e,t,n,i){return t==null?
Ui:ts(t,n,e.scales[i].log,!1)}var Sh=Bc;function Th(e,t,n,i,o){let s=dt(Ou(e),Ou(t)),a=t-e,c=qt(o/i*a,n);do{let p=n[c],m=i*
p/a;if(m>=o&&s+(p<5?Nn.get(p):0)<=17)return[p,m]}while(++c<n.length);return[0,0]}function rc(e){let t,n;return e=e.replace(
/(\d+)px/,(i,o)=>(t=qe((n=+o)*ue))+"px"),[e,t,n]}function Mh(e){e.show&&[e.font,e.labelFont].forEach(t=>{let n=ge(t[2]*ue,
1);t[0]=t[0].replace(/[0-9.]+px/,n+"px"),t[1]=n})}function Ze(e,t,n){let i={mode:se(e.mode,1)},o=i.mode;function s(r,u,f,d){
let h=u.valToPct(r);return d+f*(u.dir==-1?1-h:h)}function a(r,u,f,d){let h=u.valToPct(r);return d+f*(u.dir==-1?h:1-h)}function c(r,u,f,d){
return u.ori==0?s(r,u,f,d):a(r,u,f,d)}i.valToPosH=s,i.valToPosV=a;let p=!1;i.status=0;let m=i.root=Dt(Lp);if(e.id!=null&&
(m.id=e.id),wt(m,e.class),e.title){let r=Dt(Op,m);r.textContent=e.title}let g=Vt("canvas"),_=i.ctx=g.getContext("2d"),y=Dt(
Fp,m);si("click",y,r=>{r.target===x&&(be!=Si||Te!=Ti)&&et.click(i,r)},!0);let v=i.under=Dt(Ip,y);y.appendChild(g);let x=i.
over=Dt(Hp,y);e=Bi(e);let E=+se(e.pxAlign,1),M=tc(E);(e.plugins||[]).forEach(r=>{r.opts&&(e=r.opts(i,e)||e)});let A=e.ms||
.001,w=i.series=o==1?oc(e.series||[],Gu,Xu,!1):yh(e.series||[null],Zu),$=i.axes=oc(e.axes||[],ju,Qu,!0),S=i.scales={},Y=i.
bands=e.bands||[];Y.forEach(r=>{r.fill=ne(r.fill||null),r.dir=se(r.dir,-1)});let O=o==2?w[1].facets[0].scale:w[0].scale,
Q={axes:yf,series:hf},W=(e.drawOrder||["axes","series"]).map(r=>Q[r]);function X(r){let u=r.distr==3?f=>bn(f>0?f:r.clamp(
i,f,r.min,r.max,r.key)):r.distr==4?f=>Il(f,r.asinh):r.distr==100?f=>r.fwd(f):f=>f;return f=>{let d=u(f),{_min:h,_max:b}=r,
k=b-h;return(d-h)/k}}function q(r){let u=S[r];if(u==null){let f=(e.scales||Co)[r]||Co;if(f.from!=null){q(f.from);let d=Oe(
{},S[f.from],f,{key:r});d.valToPct=X(d),S[r]=d}else{u=S[r]=Oe({},r==O?Lc:ah,f),u.key=r;let d=u.time,h=u.range,b=Ln(h);if((r!=
O||o==2&&!d)&&(b&&(h[0]==null||h[1]==null)&&(h={min:h[0]==null?Lu:{mode:1,hard:h[0],soft:h[0]},max:h[1]==null?Lu:{mode:1,
hard:h[1],soft:h[1]}},b=!1),!b&&Cr(h))){let k=h;h=(T,C,D)=>C==null?Ui:kr(C,D,k)}u.range=ne(h||(d?wh:r==O?u.distr==3?kh:u.
distr==4?Sh:Wc:u.distr==3?Uc:u.distr==4?Bc:xh)),u.auto=ne(b?!1:u.auto),u.clamp=ne(u.clamp||sh),u._min=u._max=null,u.valToPct=
X(u)}}}q("x"),q("y"),o==1&&w.forEach(r=>{q(r.scale)}),$.forEach(r=>{q(r.scale)});for(let r in e.scales)q(r);let P=S[O],U=P.
distr,L,K;P.ori==0?(wt(m,Np),L=s,K=a):(wt(m,Rp),L=a,K=s);let V={};for(let r in S){let u=S[r];(u.min!=null||u.max!=null)&&
(V[r]={min:u.min,max:u.max},u.min=u.max=null)}let ie=e.tzDate||(r=>new Date(qe(r/A))),z=e.fmtDate||rs,pt=A==1?Nm(ie):Fm(
ie),ke=Uu(ie,Wu(A==1?Lm:Om,z)),re=Ku(ie,Bu(Hm,z)),de=[],ee=i.legend=Oe({},qm,e.legend),I=i.cursor=Oe({},Gm,{drag:{y:o==2}},
e.cursor),Fe=ee.show,st=I.show,Se=ee.markers;ee.idxs=de,Se.width=ne(Se.width),Se.dash=ne(Se.dash),Se.stroke=ne(Se.stroke),
Se.fill=ne(Se.fill);let ce,Nt,gt,Ee=[],Ut=[],rn,St=!1,wn={};if(ee.live){let r=w[1]?w[1].values:null;St=r!=null,rn=St?r(i,
1,0):{_:0};for(let u in rn)wn[u]=Xl}if(Fe)if(ce=Vt("table",Bp,m),gt=Vt("tbody",null,ce),ee.mount(i,ce),St){Nt=Vt("thead",
null,ce,gt);let r=Vt("tr",null,Nt);Vt("th",null,r);for(var ci in rn)Vt("th",yu,r).textContent=ci}else wt(ce,jp),ee.live&&
wt(ce,Kp);let fi={show:!0},Ji={show:!1};function Ao(r,u){if(u==0&&(St||!ee.live||o==2))return Ui;let f=[],d=Vt("tr",Gp,gt,
gt.childNodes[u]);wt(d,r.class),r.show||wt(d,li);let h=Vt("th",null,d);if(Se.show){let T=Dt(Yp,h);if(u>0){let C=Se.width(
i,u);C&&(T.style.border=C+"px "+Se.dash(i,u)+" "+Se.stroke(i,u)),T.style.background=Se.fill(i,u)}}let b=Dt(yu,h);r.label instanceof
HTMLElement?b.appendChild(r.label):b.textContent=r.label,u>0&&(Se.show||(b.style.color=r.width>0?Se.stroke(i,u):Se.fill(
i,u)),at("click",h,T=>{if(I._lock)return;zn(T);let C=w.indexOf(r);if((T.ctrlKey||T.metaKey)!=ee.isolate){let D=w.some((N,F)=>F>
0&&F!=C&&N.show);w.forEach((N,F)=>{F>0&&jt(F,D?F==C?fi:Ji:fi,!0,Ne.setSeries)})}else jt(C,{show:!r.show},!0,Ne.setSeries)},
!1),hi&&at(Su,h,T=>{I._lock||(zn(T),jt(w.indexOf(r),Ei,!0,Ne.setSeries))},!1));for(var k in rn){let T=Vt("td",Qp,d);T.textContent=
"--",f.push(T)}return[d,f]}let Rn=new Map;function at(r,u,f,d=!0){let h=Rn.get(u)||{},b=I.bind[r](i,u,f,d);b&&(si(r,u,h[r]=
b),Rn.set(u,h))}function di(r,u,f){let d=Rn.get(u)||{};for(let h in d)(r==null||h==r)&&(Bl(h,u,d[h]),delete d[h]);r==null&&
Rn.delete(u)}let ln=0,On=0,Z=0,R=0,ve=0,Ie=0,pi=ve,Fn=Ie,Bt=Z,In=R,vt=0,Tt=0,mt=0,Rt=0;i.bbox={};let Nr=!1,$o=!1,mi=!1,Hn=!1,
Do=!1,Mt=!1;function Rr(r,u,f){(f||r!=i.width||u!=i.height)&&hs(r,u),yi(!1),mi=!0,$o=!0,wi()}function hs(r,u){i.width=ln=
Z=r,i.height=On=R=u,ve=Ie=0,af(),uf();let f=i.bbox;vt=f.left=oi(ve*ue,.5),Tt=f.top=oi(Ie*ue,.5),mt=f.width=oi(Z*ue,.5),Rt=
f.height=oi(R*ue,.5)}let rf=3;function lf(){let r=!1,u=0;for(;!r;){u++;let f=_f(u),d=bf(u);r=u==rf||f&&d,r||(hs(i.width,
i.height),$o=!0)}}function sf({width:r,height:u}){Rr(r,u)}i.setSize=sf;function af(){let r=!1,u=!1,f=!1,d=!1;$.forEach((h,b)=>{
if(h.show&&h._show){let{side:k,_size:T}=h,C=k%2,D=h.label!=null?h.labelSize:0,N=T+D;N>0&&(C?(Z-=N,k==3?(ve+=N,d=!0):f=!0):
(R-=N,k==0?(Ie+=N,r=!0):u=!0))}}),Vn[0]=r,Vn[1]=f,Vn[2]=u,Vn[3]=d,Z-=xn[1]+xn[3],ve+=xn[3],R-=xn[2]+xn[0],Ie+=xn[0]}function uf(){
let r=ve+Z,u=Ie+R,f=ve,d=Ie;function h(b,k){switch(b){case 1:return r+=k,r-k;case 2:return u+=k,u-k;case 3:return f-=k,f+
k;case 0:return d-=k,d+k}}$.forEach((b,k)=>{if(b.show&&b._show){let T=b.side;b._pos=h(T,b._size),b.label!=null&&(b._lpos=
h(T,b.labelSize))}})}if(I.dataIdx==null){let r=I.hover,u=r.skip=new Set(r.skip??[]);u.add(void 0);let f=r.prox=ne(r.prox),
d=r.bias??=0;I.dataIdx=(h,b,k,T)=>{if(b==0)return k;let C=k,D=f(h,b,k,T)??he,N=D>=0&&D<he,F=P.ori==0?Z:R,j=I.left,ae=t[0],
le=t[b];if(u.has(le[k])){C=null;let te=null,B=null,H;if(d==0||d==-1)for(H=k;te==null&&H-- >0;)u.has(le[H])||(te=H);if(d==
0||d==1)for(H=k;B==null&&H++<le.length;)u.has(le[H])||(B=H);if(te!=null||B!=null)if(N){let we=te==null?-1/0:L(ae[te],P,F,
0),Ae=B==null?1/0:L(ae[B],P,F,0),Ye=j-we,pe=Ae-j;Ye<=pe?Ye<=D&&(C=te):pe<=D&&(C=B)}else C=B==null?te:te==null?B:k-te<=B-
k?te:B}else N&&We(j-L(ae[k],P,F,0))>D&&(C=null);return C}}let zn=r=>{I.event=r};I.idxs=de,I._lock=!1;let rt=I.points;rt.
show=ne(rt.show),rt.size=ne(rt.size),rt.stroke=ne(rt.stroke),rt.width=ne(rt.width),rt.fill=ne(rt.fill);let Kt=i.focus=Oe(
{},e.focus||{alpha:.3},I.focus),hi=Kt.prox>=0,gi=hi&&rt.one,Et=[],vi=[],_i=[];function gs(r,u){let f=rt.show(i,u);if(f instanceof
HTMLElement)return wt(f,Up),wt(f,r.class),on(f,-10,-10,Z,R),x.insertBefore(f,Et[u]),f}function vs(r,u){if(o==1||u>0){let f=o==
1&&S[r.scale].time,d=r.value;r.value=f?Hu(d)?Ku(ie,Bu(d,z)):d||re:d||oh,r.label=r.label||(f?Qm:Ym)}if(gi||u>0){r.width=r.
width==null?1:r.width,r.paths=r.paths||_h||am,r.fillTo=ne(r.fillTo||uh),r.pxAlign=+se(r.pxAlign,E),r.pxRound=tc(r.pxAlign),
r.stroke=ne(r.stroke||null),r.fill=ne(r.fill||null),r._stroke=r._fill=r._paths=r._focus=null;let f=rh(dt(1,r.width),1),d=r.
points=Oe({},{size:f,width:dt(1,f*.2),stroke:r.stroke,space:f*2,paths:bh,_stroke:null,_fill:null},r.points);d.show=ne(d.
show),d.filter=ne(d.filter),d.fill=ne(d.fill),d.stroke=ne(d.stroke),d.paths=ne(d.paths),d.pxAlign=r.pxAlign}if(Fe){let f=Ao(
r,u);Ee.splice(u,0,f[0]),Ut.splice(u,0,f[1]),ee.values.push(null)}if(st){de.splice(u,0,null);let f=null;gi?u==0&&(f=gs(r,
u)):u>0&&(f=gs(r,u)),Et.splice(u,0,f),vi.splice(u,0,0),_i.splice(u,0,0)}Ge("addSeries",u)}function cf(r,u){u=u??w.length,
r=o==1?Jl(r,u,Gu,Xu):Jl(r,u,{},Zu),w.splice(u,0,r),vs(w[u],u)}i.addSeries=cf;function ff(r){if(w.splice(r,1),Fe){ee.values.
splice(r,1),Ut.splice(r,1);let u=Ee.splice(r,1)[0];di(null,u.firstChild),u.remove()}st&&(de.splice(r,1),Et.splice(r,1)[0].
remove(),vi.splice(r,1),_i.splice(r,1)),Ge("delSeries",r)}i.delSeries=ff;let Vn=[!1,!1,!1,!1];function df(r,u){if(r._show=
r.show,r.show){let f=r.side%2,d=S[r.scale];d==null&&(r.scale=f?w[1].scale:O,d=S[r.scale]);let h=d.time;r.size=ne(r.size),
r.space=ne(r.space),r.rotate=ne(r.rotate),Ln(r.incrs)&&r.incrs.forEach(k=>{!Nn.has(k)&&Nn.set(k,mc(k))}),r.incrs=ne(r.incrs||
(d.distr==2?Am:h?A==1?Dm:Rm:ri)),r.splits=ne(r.splits||(h&&d.distr==1?pt:d.distr==3?jl:d.distr==4?Xm:Zm)),r.stroke=ne(r.
stroke),r.grid.stroke=ne(r.grid.stroke),r.ticks.stroke=ne(r.ticks.stroke),r.border.stroke=ne(r.border.stroke);let b=r.values;
r.values=Ln(b)&&!Ln(b[0])?ne(b):h?Ln(b)?Uu(ie,Wu(b,z)):Hu(b)?Im(ie,b):b||ke:b||Jm,r.filter=ne(r.filter||(d.distr>=3&&d.log==
10?nh:d.distr==3&&d.log==2?ih:dc)),r.font=rc(r.font),r.labelFont=rc(r.labelFont),r._size=r.size(i,null,u,0),r._space=r._rotate=
r._incrs=r._found=r._splits=r._values=null,r._size>0&&(Vn[u]=!0,r._el=Dt(zp,y))}}function Zi(r,u,f,d){let[h,b,k,T]=f,C=u%
2,D=0;return C==0&&(T||b)&&(D=u==0&&!h||u==2&&!k?qe(ju.size/3):0),C==1&&(h||k)&&(D=u==1&&!b||u==3&&!T?qe(Qu.size/2):0),D}
let _s=i.padding=(e.padding||[Zi,Zi,Zi,Zi]).map(r=>ne(se(r,Zi))),xn=i._padding=_s.map((r,u)=>r(i,u,Vn,0)),Xe,Ue=null,Be=null,
Lo=o==1?w[0].idxs:null,Ot=null,Xi=!1;function bs(r,u){if(t=r??[],i.data=i._data=t,o==2){Xe=0;for(let f=1;f<w.length;f++)
Xe+=t[f][0].length}else{t.length==0&&(i.data=i._data=t=[[]]),Ot=t[0],Xe=Ot.length;let f=t;if(U==2){f=t.slice();let d=f[0]=
Array(Xe);for(let h=0;h<Xe;h++)d[h]=h}i._data=t=f}if(yi(!0),Ge("setData"),U==2&&(mi=!0),u!==!1){let f=P;f.auto(i,Xi)?Or():
Sn(O,f.min,f.max),Hn=Hn||I.left>=0,Mt=!0,wi()}}i.setData=bs;function Or(){Xi=!0;let r,u;o==1&&(Xe>0?(Ue=Lo[0]=0,Be=Lo[1]=
Xe-1,r=t[0][Ue],u=t[0][Be],U==2?(r=Ue,u=Be):r==u&&(U==3?[r,u]=Mr(r,r,P.log,!1):U==4?[r,u]=ts(r,r,P.log,!1):P.time?u=r+qe(
86400/A):[r,u]=kr(r,u,ns,!0))):(Ue=Lo[0]=r=null,Be=Lo[1]=u=null)),Sn(O,r,u)}let No,bi,Fr,Ir,Hr,zr,Vr,qr,Wr,ht;function ys(r,u,f,d,h,b){
r??=xu,f??=os,d??="butt",h??=xu,b??="round",r!=No&&(_.strokeStyle=No=r),h!=bi&&(_.fillStyle=bi=h),u!=Fr&&(_.lineWidth=Fr=
u),b!=Hr&&(_.lineJoin=Hr=b),d!=zr&&(_.lineCap=zr=d),f!=Ir&&_.setLineDash(Ir=f)}function ws(r,u,f,d){u!=bi&&(_.fillStyle=
bi=u),r!=Vr&&(_.font=Vr=r),f!=qr&&(_.textAlign=qr=f),d!=Wr&&(_.textBaseline=Wr=d)}function Ur(r,u,f,d,h=0){if(d.length>0&&
r.auto(i,Xi)&&(u==null||u.min==null)){let b=se(Ue,0),k=se(Be,d.length-1),T=f.min==null?nm(d,b,k,h,r.distr==3):[f.min,f.max];
r.min=Wt(r.min,f.min=T[0]),r.max=dt(r.max,f.max=T[1])}}let xs={min:null,max:null};function pf(){for(let d in S){let h=S[d];
V[d]==null&&(h.min==null||V[O]!=null&&h.auto(i,Xi))&&(V[d]=xs)}for(let d in S){let h=S[d];V[d]==null&&h.from!=null&&V[h.
from]!=null&&(V[d]=xs)}V[O]!=null&&yi(!0);let r={};for(let d in V){let h=V[d];if(h!=null){let b=r[d]=Bi(S[d],fm);if(h.min!=
null)Oe(b,h);else if(d!=O||o==2)if(Xe==0&&b.from==null){let k=b.range(i,null,null,d);b.min=k[0],b.max=k[1]}else b.min=he,
b.max=-he}}if(Xe>0){w.forEach((d,h)=>{if(o==1){let b=d.scale,k=V[b];if(k==null)return;let T=r[b];if(h==0){let C=T.range(
i,T.min,T.max,b);T.min=C[0],T.max=C[1],Ue=qt(T.min,t[0]),Be=qt(T.max,t[0]),Be-Ue>1&&(t[0][Ue]<T.min&&Ue++,t[0][Be]>T.max&&
Be--),d.min=Ot[Ue],d.max=Ot[Be]}else d.show&&d.auto&&Ur(T,k,d,t[h],d.sorted);d.idxs[0]=Ue,d.idxs[1]=Be}else if(h>0&&d.show&&
d.auto){let[b,k]=d.facets,T=b.scale,C=k.scale,[D,N]=t[h],F=r[T],j=r[C];F!=null&&Ur(F,V[T],b,D,b.sorted),j!=null&&Ur(j,V[C],
k,N,k.sorted),d.min=k.min,d.max=k.max}});for(let d in r){let h=r[d],b=V[d];if(h.from==null&&(b==null||b.min==null)){let k=h.
range(i,h.min==he?null:h.min,h.max==-he?null:h.max,d);h.min=k[0],h.max=k[1]}}}for(let d in r){let h=r[d];if(h.from!=null){
let b=r[h.from];if(b.min==null)h.min=h.max=null;else{let k=h.range(i,b.min,b.max,d);h.min=k[0],h.max=k[1]}}}let u={},f=!1;
for(let d in r){let h=r[d],b=S[d];if(b.min!=h.min||b.max!=h.max){b.min=h.min,b.max=h.max;let k=b.distr;b._min=k==3?bn(b.
min):k==4?Il(b.min,b.asinh):k==100?b.fwd(b.min):b.min,b._max=k==3?bn(b.max):k==4?Il(b.max,b.asinh):k==100?b.fwd(b.max):b.
max,u[d]=f=!0}}if(f){w.forEach((d,h)=>{o==2?h>0&&u.y&&(d._paths=null):u[d.scale]&&(d._paths=null)});for(let d in u)mi=!0,
Ge("setScale",d);st&&I.left>=0&&(Hn=Mt=!0)}for(let d in V)V[d]=null}function mf(r){let u=Kl(Ue-1,0,Xe-1),f=Kl(Be+1,0,Xe-
1);for(;r[u]==null&&u>0;)u--;for(;r[f]==null&&f<Xe-1;)f++;return[u,f]}function hf(){if(Xe>0){let r=w.some(u=>u._focus)&&
ht!=Kt.alpha;r&&(_.globalAlpha=ht=Kt.alpha),w.forEach((u,f)=>{if(f>0&&u.show&&(ks(f,!1),ks(f,!0),u._paths==null)){let d=ht;
ht!=u.alpha&&(_.globalAlpha=ht=u.alpha);let h=o==2?[0,t[f][0].length-1]:mf(t[f]);u._paths=u.paths(i,f,h[0],h[1]),ht!=d&&
(_.globalAlpha=ht=d)}}),w.forEach((u,f)=>{if(f>0&&u.show){let d=ht;ht!=u.alpha&&(_.globalAlpha=ht=u.alpha),u._paths!=null&&
Ss(f,!1);{let h=u._paths!=null?u._paths.gaps:null,b=u.points.show(i,f,Ue,Be,h),k=u.points.filter(i,f,b,h);(b||k)&&(u.points.
_paths=u.points.paths(i,f,Ue,Be,k),Ss(f,!0))}ht!=d&&(_.globalAlpha=ht=d),Ge("drawSeries",f)}}),r&&(_.globalAlpha=ht=1)}}
function ks(r,u){let f=u?w[r].points:w[r];f._stroke=f.stroke(i,r),f._fill=f.fill(i,r)}function Ss(r,u){let f=u?w[r].points:
w[r],{stroke:d,fill:h,clip:b,flags:k,_stroke:T=f._stroke,_fill:C=f._fill,_width:D=f.width}=f._paths;D=ge(D*ue,3);let N=null,
F=D%2/2;u&&C==null&&(C=D>0?"#fff":T);let j=f.pxAlign==1&&F>0;if(j&&_.translate(F,F),!u){let ae=vt-D/2,le=Tt-D/2,te=mt+D,
B=Rt+D;N=new Path2D,N.rect(ae,le,te,B)}u?Br(T,D,f.dash,f.cap,C,d,h,k,b):gf(r,T,D,f.dash,f.cap,C,d,h,k,N,b),j&&_.translate(
-F,-F)}function gf(r,u,f,d,h,b,k,T,C,D,N){let F=!1;C!=0&&Y.forEach((j,ae)=>{if(j.series[0]==r){let le=w[j.series[1]],te=t[j.
series[1]],B=(le._paths||Co).band;Ln(B)&&(B=j.dir==1?B[0]:B[1]);let H,we=null;le.show&&B&&om(te,Ue,Be)?(we=j.fill(i,ae)||
b,H=le._paths.clip):B=null,Br(u,f,d,h,we,k,T,C,D,N,H,B),F=!0}}),F||Br(u,f,d,h,b,k,T,C,D,N)}let Ts=Ki|Yl;function Br(r,u,f,d,h,b,k,T,C,D,N,F){
ys(r,u,f,d,h),(C||D||F)&&(_.save(),C&&_.clip(C),D&&_.clip(D)),F?(T&Ts)==Ts?(_.clip(F),N&&_.clip(N),Oo(h,k),Ro(r,b,u)):T&
Yl?(Oo(h,k),_.clip(F),Ro(r,b,u)):T&Ki&&(_.save(),_.clip(F),N&&_.clip(N),Oo(h,k),_.restore(),Ro(r,b,u)):(Oo(h,k),Ro(r,b,u)),
(C||D||F)&&_.restore()}function Ro(r,u,f){f>0&&(u instanceof Map?u.forEach((d,h)=>{_.strokeStyle=No=h,_.stroke(d)}):u!=null&&
r&&_.stroke(u))}function Oo(r,u){u instanceof Map?u.forEach((f,d)=>{_.fillStyle=bi=d,_.fill(f)}):u!=null&&r&&_.fill(u)}function vf(r,u,f,d){
let h=$[r],b;if(d<=0)b=[0,0];else{let k=h._space=h.space(i,r,u,f,d),T=h._incrs=h.incrs(i,r,u,f,d,k);b=Th(u,f,T,d,k)}return h.
_found=b}function Kr(r,u,f,d,h,b,k,T,C,D){let N=k%2/2;E==1&&_.translate(N,N),ys(T,k,C,D,T),_.beginPath();let F,j,ae,le,te=h+
(d==0||d==3?-b:b);f==0?(j=h,le=te):(F=h,ae=te);for(let B=0;B<r.length;B++)u[B]!=null&&(f==0?F=ae=r[B]:j=le=r[B],_.moveTo(
F,j),_.lineTo(ae,le));_.stroke(),E==1&&_.translate(-N,-N)}function _f(r){let u=!0;return $.forEach((f,d)=>{if(!f.show)return;
let h=S[f.scale];if(h.min==null){f._show&&(u=!1,f._show=!1,yi(!1));return}else f._show||(u=!1,f._show=!0,yi(!1));let b=f.
side,k=b%2,{min:T,max:C}=h,[D,N]=vf(d,T,C,k==0?Z:R);if(N==0)return;let F=h.distr==2,j=f._splits=f.splits(i,d,T,C,D,N,F),
ae=h.distr==2?j.map(H=>Ot[H]):j,le=h.distr==2?Ot[j[1]]-Ot[j[0]]:D,te=f._values=f.values(i,f.filter(i,ae,d,N,le),d,N,le);
f._rotate=b==2?f.rotate(i,te,d,N):0;let B=f._size;f._size=Lt(f.size(i,te,d,r)),B!=null&&f._size!=B&&(u=!1)}),u}function bf(r){
let u=!0;return _s.forEach((f,d)=>{let h=f(i,d,Vn,r);h!=xn[d]&&(u=!1),xn[d]=h}),u}function yf(){for(let r=0;r<$.length;r++){
let u=$[r];if(!u.show||!u._show)continue;let f=u.side,d=f%2,h,b,k=u.stroke(i,r),T=f==0||f==3?-1:1,[C,D]=u._found;if(u.label!=
null){let ct=u.labelGap*T,yt=qe((u._lpos+ct)*ue);ws(u.labelFont[0],k,"center",f==2?"top":wu),_.save(),d==1?(h=b=0,_.translate(
yt,qe(Tt+Rt/2)),_.rotate((f==3?-wr:wr)/2)):(h=qe(vt+mt/2),b=yt);let Un=cc(u.label)?u.label(i,r,C,D):u.label;_.fillText(Un,
h,b),_.restore()}if(D==0)continue;let N=S[u.scale],F=d==0?mt:Rt,j=d==0?vt:Tt,ae=u._splits,le=N.distr==2?ae.map(ct=>Ot[ct]):
ae,te=N.distr==2?Ot[ae[1]]-Ot[ae[0]]:C,B=u.ticks,H=u.border,we=B.show?B.size:0,Ae=qe(we*ue),Ye=qe((u.alignTo==2?u._size-
we-u.gap:u.gap)*ue),pe=u._rotate*-wr/180,$e=M(u._pos*ue),_t=(Ae+Ye)*T,ut=$e+_t;b=d==0?ut:0,h=d==1?ut:0;let Ct=u.font[0],
Ft=u.align==1?zi:u.align==2?Rl:pe>0?zi:pe<0?Rl:d==0?"center":f==3?Rl:zi,Yt=pe||d==1?"middle":f==2?"top":wu;ws(Ct,k,Ft,Yt);
let bt=u.font[1]*u.lineGap,Pt=ae.map(ct=>M(c(ct,N,F,j))),It=u._values;for(let ct=0;ct<It.length;ct++){let yt=It[ct];if(yt!=
null){d==0?h=Pt[ct]:b=Pt[ct],yt=""+yt;let Un=yt.indexOf(`
`)==-1?[yt]:yt.split(/\n/gm);for(let ft=0;ft<Un.length;ft++){let Us=Un[ft];pe?(_.save(),_.translate(h,b+ft*bt),_.rotate(
pe),_.fillText(Us,0,0),_.restore()):_.fillText(Us,h,b+ft*bt)}}}B.show&&Kr(Pt,B.filter(i,le,r,D,te),d,f,$e,Ae,ge(B.width*
ue,3),B.stroke(i,r),B.dash,B.cap);let Qt=u.grid;Qt.show&&Kr(Pt,Qt.filter(i,le,r,D,te),d,d==0?2:1,d==0?Tt:vt,d==0?Rt:mt,ge(
Qt.width*ue,3),Qt.stroke(i,r),Qt.dash,Qt.cap),H.show&&Kr([$e],[1],d==0?1:0,d==0?1:2,d==1?Tt:vt,d==1?Rt:mt,ge(H.width*ue,
3),H.stroke(i,r),H.dash,H.cap)}Ge("drawAxes")}function yi(r){w.forEach((u,f)=>{f>0&&(u._paths=null,r&&(o==1?(u.min=null,
u.max=null):u.facets.forEach(d=>{d.min=null,d.max=null})))})}let Fo=!1,jr=!1,eo=[];function wf(){jr=!1;for(let r=0;r<eo.
length;r++)Ge(...eo[r]);eo.length=0}function wi(){Fo||(_m(Ms),Fo=!0)}function xf(r,u=!1){Fo=!0,jr=u,r(i),Ms(),u&&eo.length>
0&&queueMicrotask(wf)}i.batch=xf;function Ms(){if(Nr&&(pf(),Nr=!1),mi&&(lf(),mi=!1),$o){if(xe(v,zi,ve),xe(v,"top",Ie),xe(
v,So,Z),xe(v,To,R),xe(x,zi,ve),xe(x,"top",Ie),xe(x,So,Z),xe(x,To,R),xe(y,So,ln),xe(y,To,On),g.width=qe(ln*ue),g.height=qe(
On*ue),$.forEach(({_el:r,_show:u,_size:f,_pos:d,side:h})=>{if(r!=null)if(u){let b=h===3||h===0?f:0,k=h%2==1;xe(r,k?"left":
"top",d-b),xe(r,k?"width":"height",f),xe(r,k?"top":"left",k?Ie:ve),xe(r,k?"height":"width",k?R:Z),Ul(r,li)}else wt(r,li)}),
No=bi=Fr=Hr=zr=Vr=qr=Wr=Ir=null,ht=1,io(!0),ve!=pi||Ie!=Fn||Z!=Bt||R!=In){yi(!1);let r=Z/Bt,u=R/In;if(st&&!Hn&&I.left>=0){
I.left*=r,I.top*=u,xi&&on(xi,qe(I.left),0,Z,R),ki&&on(ki,0,qe(I.top),Z,R);for(let f=0;f<Et.length;f++){let d=Et[f];d!=null&&
(vi[f]*=r,_i[f]*=u,on(d,Lt(vi[f]),Lt(_i[f]),Z,R))}}if(ye.show&&!Do&&ye.left>=0&&ye.width>0){ye.left*=r,ye.width*=r,ye.top*=
u,ye.height*=u;for(let f in Xr)xe(Mi,f,ye[f])}pi=ve,Fn=Ie,Bt=Z,In=R}Ge("setSize"),$o=!1}ln>0&&On>0&&(_.clearRect(0,0,g.width,
g.height),Ge("drawClear"),W.forEach(r=>r()),Ge("draw")),ye.show&&Do&&(Io(ye),Do=!1),st&&Hn&&(Wn(null,!0,!1),Hn=!1),ee.show&&
ee.live&&Mt&&(Jr(),Mt=!1),p||(p=!0,i.status=1,Ge("ready")),Xi=!1,Fo=!1}i.redraw=(r,u)=>{mi=u||!1,r!==!1?Sn(O,P.min,P.max):
wi()};function Gr(r,u){let f=S[r];if(f.from==null){if(Xe==0){let d=f.range(i,u.min,u.max,r);u.min=d[0],u.max=d[1]}if(u.min>
u.max){let d=u.min;u.min=u.max,u.max=d}if(Xe>1&&u.min!=null&&u.max!=null&&u.max-u.min<1e-16)return;r==O&&f.distr==2&&Xe>
0&&(u.min=qt(u.min,t[0]),u.max=qt(u.max,t[0]),u.min==u.max&&u.max++),V[r]=u,Nr=!0,wi()}}i.setScale=Gr;let Yr,Qr,xi,ki,Es,
Cs,Si,Ti,Ps,As,be,Te,kn=!1,et=I.drag,Ke=et.x,je=et.y;st&&(I.x&&(Yr=Dt(qp,x)),I.y&&(Qr=Dt(Wp,x)),P.ori==0?(xi=Yr,ki=Qr):(xi=
Qr,ki=Yr),be=I.left,Te=I.top);let ye=i.select=Oe({show:!0,over:!0,left:0,width:0,top:0,height:0},e.select),Mi=ye.show?Dt(
Vp,ye.over?x:v):null;function Io(r,u){if(ye.show){for(let f in r)ye[f]=r[f],f in Xr&&xe(Mi,f,r[f]);u!==!1&&Ge("setSelect")}}
i.setSelect=Io;function kf(r){if(w[r].show)Fe&&Ul(Ee[r],li);else if(Fe&&wt(Ee[r],li),st){let f=gi?Et[0]:Et[r];f!=null&&on(
f,-10,-10,Z,R)}}function Sn(r,u,f){Gr(r,{min:u,max:f})}function jt(r,u,f,d){u.focus!=null&&Cf(r),u.show!=null&&w.forEach(
(h,b)=>{b>0&&(r==b||r==null)&&(h.show=u.show,kf(b),o==2?(Sn(h.facets[0].scale,null,null),Sn(h.facets[1].scale,null,null)):
Sn(h.scale,null,null),wi())}),f!==!1&&Ge("setSeries",r,u),d&&oo("setSeries",i,r,u)}i.setSeries=jt;function Sf(r,u){Oe(Y[r],
u)}function Tf(r,u){r.fill=ne(r.fill||null),r.dir=se(r.dir,-1),u=u??Y.length,Y.splice(u,0,r)}function Mf(r){r==null?Y.length=
0:Y.splice(r,1)}i.addBand=Tf,i.setBand=Sf,i.delBand=Mf;function Ef(r,u){w[r].alpha=u,st&&Et[r]!=null&&(Et[r].style.opacity=
u),Fe&&Ee[r]&&(Ee[r].style.opacity=u)}let sn,Tn,qn,Ei={focus:!0};function Cf(r){if(r!=qn){let u=r==null,f=Kt.alpha!=1;w.
forEach((d,h)=>{if(o==1||h>0){let b=u||h==0||h==r;d._focus=u?null:b,f&&Ef(h,b?1:Kt.alpha)}}),qn=r,f&&wi()}}Fe&&hi&&at(Tu,
ce,r=>{I._lock||(zn(r),qn!=null&&jt(null,Ei,!0,Ne.setSeries))});function Gt(r,u,f){let d=S[u];f&&(r=r/ue-(d.ori==1?Ie:ve));
let h=Z;d.ori==1&&(h=R,r=h-r),d.dir==-1&&(r=h-r);let b=d._min,k=d._max,T=r/h,C=b+(k-b)*T,D=d.distr;return D==3?Wi(10,C):
D==4?lm(C,d.asinh):D==100?d.bwd(C):C}function Pf(r,u){let f=Gt(r,O,u);return qt(f,t[0],Ue,Be)}i.valToIdx=r=>qt(r,t[0]),i.
posToIdx=Pf,i.posToVal=Gt,i.valToPos=(r,u,f)=>S[u].ori==0?s(r,S[u],f?mt:Z,f?vt:0):a(r,S[u],f?Rt:R,f?Tt:0),i.setCursor=(r,u,f)=>{
be=r.left,Te=r.top,Wn(null,u,f)};function $s(r,u){xe(Mi,zi,ye.left=r),xe(Mi,So,ye.width=u)}function Ds(r,u){xe(Mi,"top",
ye.top=r),xe(Mi,To,ye.height=u)}let to=P.ori==0?$s:Ds,no=P.ori==1?$s:Ds;function Af(){if(Fe&&ee.live)for(let r=o==2?1:0;r<
w.length;r++){if(r==0&&St)continue;let u=ee.values[r],f=0;for(let d in u)Ut[r][f++].firstChild.nodeValue=u[d]}}function Jr(r,u){
if(r!=null&&(r.idxs?r.idxs.forEach((f,d)=>{de[d]=f}):cm(r.idx)||de.fill(r.idx),ee.idx=de[0]),Fe&&ee.live){for(let f=0;f<
w.length;f++)(f>0||o==1&&!St)&&$f(f,de[f]);Af()}Mt=!1,u!==!1&&Ge("setLegend")}i.setLegend=Jr;function $f(r,u){let f=w[r],
d=r==0&&U==2?Ot:t[r],h;St?h=f.values(i,r,u)??wn:(h=f.value(i,u==null?null:d[u],r,u),h=h==null?wn:{_:h}),ee.values[r]=h}function Wn(r,u,f){
Ps=be,As=Te,[be,Te]=I.move(i,be,Te),I.left=be,I.top=Te,st&&(xi&&on(xi,qe(be),0,Z,R),ki&&on(ki,0,qe(Te),Z,R));let d,h=Ue>
Be;sn=he,Tn=null;let b=P.ori==0?Z:R,k=P.ori==1?Z:R;if(be<0||Xe==0||h){d=I.idx=null;for(let T=0;T<w.length;T++){let C=Et[T];
C!=null&&on(C,-10,-10,Z,R)}hi&&jt(null,Ei,!0,r==null&&Ne.setSeries),ee.live&&(de.fill(d),Mt=!0)}else{let T,C,D;o==1&&(T=
P.ori==0?be:Te,C=Gt(T,O),d=I.idx=qt(C,t[0],Ue,Be),D=L(t[0][d],P,b,0));let N=-10,F=-10,j=0,ae=0,le=!0,te="",B="";for(let H=o==
2?1:0;H<w.length;H++){let we=w[H],Ae=de[H],Ye=Ae==null?null:o==1?t[H][Ae]:t[H][1][Ae],pe=I.dataIdx(i,H,d,C),$e=pe==null?
null:o==1?t[H][pe]:t[H][1][pe];if(Mt=Mt||$e!=Ye||pe!=Ae,de[H]=pe,H>0&&we.show){let _t=pe==null?-10:pe==d?D:L(o==1?t[0][pe]:
t[H][0][pe],P,b,0),ut=$e==null?-10:K($e,o==1?S[we.scale]:S[we.facets[1].scale],k,0);if(hi&&$e!=null){let Ct=P.ori==1?be:
Te,Ft=We(Kt.dist(i,H,pe,ut,Ct));if(Ft<sn){let Yt=Kt.bias;if(Yt!=0){let bt=Gt(Ct,we.scale),Pt=$e>=0?1:-1,It=bt>=0?1:-1;It==
Pt&&(It==1?Yt==1?$e>=bt:$e<=bt:Yt==1?$e<=bt:$e>=bt)&&(sn=Ft,Tn=H)}else sn=Ft,Tn=H}}if(Mt||gi){let Ct,Ft;P.ori==0?(Ct=_t,
Ft=ut):(Ct=ut,Ft=_t);let Yt,bt,Pt,It,Qt,ct,yt=!0,Un=rt.bbox;if(Un!=null){yt=!1;let ft=Un(i,H);Pt=ft.left,It=ft.top,Yt=ft.
width,bt=ft.height}else Pt=Ct,It=Ft,Yt=bt=rt.size(i,H);if(ct=rt.fill(i,H),Qt=rt.stroke(i,H),gi)H==Tn&&sn<=Kt.prox&&(N=Pt,
F=It,j=Yt,ae=bt,le=yt,te=ct,B=Qt);else{let ft=Et[H];ft!=null&&(vi[H]=Pt,_i[H]=It,Du(ft,Yt,bt,yt),Au(ft,ct,Qt),on(ft,Lt(Pt),
Lt(It),Z,R))}}}}if(gi){let H=Kt.prox,we=qn==null?sn<=H:sn>H||Tn!=qn;if(Mt||we){let Ae=Et[0];Ae!=null&&(vi[0]=N,_i[0]=F,Du(
Ae,j,ae,le),Au(Ae,te,B),on(Ae,Lt(N),Lt(F),Z,R))}}}if(ye.show&&kn)if(r!=null){let[T,C]=Ne.scales,[D,N]=Ne.match,[F,j]=r.cursor.
sync.scales,ae=r.cursor.drag;if(Ke=ae._x,je=ae._y,Ke||je){let{left:le,top:te,width:B,height:H}=r.select,we=r.scales[F].ori,
Ae=r.posToVal,Ye,pe,$e,_t,ut,Ct=T!=null&&D(T,F),Ft=C!=null&&N(C,j);Ct&&Ke?(we==0?(Ye=le,pe=B):(Ye=te,pe=H),$e=S[T],_t=L(
Ae(Ye,F),$e,b,0),ut=L(Ae(Ye+pe,F),$e,b,0),to(Wt(_t,ut),We(ut-_t))):to(0,b),Ft&&je?(we==1?(Ye=le,pe=B):(Ye=te,pe=H),$e=S[C],
_t=K(Ae(Ye,j),$e,k,0),ut=K(Ae(Ye+pe,j),$e,k,0),no(Wt(_t,ut),We(ut-_t))):no(0,k)}else el()}else{let T=We(Ps-Es),C=We(As-Cs);
if(P.ori==1){let j=T;T=C,C=j}Ke=et.x&&T>=et.dist,je=et.y&&C>=et.dist;let D=et.uni;D!=null?Ke&&je&&(Ke=T>=D,je=C>=D,!Ke&&
!je&&(C>T?je=!0:Ke=!0)):et.x&&et.y&&(Ke||je)&&(Ke=je=!0);let N,F;Ke&&(P.ori==0?(N=Si,F=be):(N=Ti,F=Te),to(Wt(N,F),We(F-N)),
je||no(0,k)),je&&(P.ori==1?(N=Si,F=be):(N=Ti,F=Te),no(Wt(N,F),We(F-N)),Ke||to(0,b)),!Ke&&!je&&(to(0,0),no(0,0))}if(et._x=
Ke,et._y=je,r==null){if(f){if(Ws!=null){let[T,C]=Ne.scales;Ne.values[0]=T!=null?Gt(P.ori==0?be:Te,T):null,Ne.values[1]=C!=
null?Gt(P.ori==1?be:Te,C):null}oo(Ol,i,be,Te,Z,R,d)}if(hi){let T=f&&Ne.setSeries,C=Kt.prox;qn==null?sn<=C&&jt(Tn,Ei,!0,T):
sn>C?jt(null,Ei,!0,T):Tn!=qn&&jt(Tn,Ei,!0,T)}}Mt&&(ee.idx=d,Jr()),u!==!1&&Ge("setCursor")}let Mn=null;Object.defineProperty(
i,"rect",{get(){return Mn==null&&io(!1),Mn}});function io(r=!1){r?Mn=null:(Mn=x.getBoundingClientRect(),Ge("syncRect",Mn))}
function Ls(r,u,f,d,h,b,k){I._lock||kn&&r!=null&&r.movementX==0&&r.movementY==0||(Zr(r,u,f,d,h,b,k,!1,r!=null),r!=null?Wn(
null,!0,!0):Wn(u,!0,!1))}function Zr(r,u,f,d,h,b,k,T,C){if(Mn==null&&io(!1),zn(r),r!=null)f=r.clientX-Mn.left,d=r.clientY-
Mn.top;else{if(f<0||d<0){be=-10,Te=-10;return}let[D,N]=Ne.scales,F=u.cursor.sync,[j,ae]=F.values,[le,te]=F.scales,[B,H]=Ne.
match,we=u.axes[0].side%2==1,Ae=P.ori==0?Z:R,Ye=P.ori==1?Z:R,pe=we?b:h,$e=we?h:b,_t=we?d:f,ut=we?f:d;if(le!=null?f=B(D,le)?
c(j,S[D],Ae,0):-10:f=Ae*(_t/pe),te!=null?d=H(N,te)?c(ae,S[N],Ye,0):-10:d=Ye*(ut/$e),P.ori==1){let Ct=f;f=d,d=Ct}}C&&(u==
null||u.cursor.event.type==Ol)&&((f<=1||f>=Z-1)&&(f=oi(f,Z)),(d<=1||d>=R-1)&&(d=oi(d,R))),T?(Es=f,Cs=d,[Si,Ti]=I.move(i,
f,d)):(be=f,Te=d)}let Xr={width:0,height:0,left:0,top:0};function el(){Io(Xr,!1)}let Ns,Rs,Os,Fs;function Is(r,u,f,d,h,b,k){
kn=!0,Ke=je=et._x=et._y=!1,Zr(r,u,f,d,h,b,k,!0,!1),r!=null&&(at(Fl,ql,Hs,!1),oo(ku,i,Si,Ti,Z,R,null));let{left:T,top:C,width:D,
height:N}=ye;Ns=T,Rs=C,Os=D,Fs=N}function Hs(r,u,f,d,h,b,k){kn=et._x=et._y=!1,Zr(r,u,f,d,h,b,k,!1,!0);let{left:T,top:C,width:D,
height:N}=ye,F=D>0||N>0,j=Ns!=T||Rs!=C||Os!=D||Fs!=N;if(F&&j&&Io(ye),et.setScale&&F&&j){let ae=T,le=D,te=C,B=N;if(P.ori==
1&&(ae=C,le=N,te=T,B=D),Ke&&Sn(O,Gt(ae,O),Gt(ae+le,O)),je)for(let H in S){let we=S[H];H!=O&&we.from==null&&we.min!=he&&Sn(
H,Gt(te+B,H),Gt(te,H))}el()}else I.lock&&(I._lock=!I._lock,Wn(u,!0,r!=null));r!=null&&(di(Fl,ql),oo(Fl,i,be,Te,Z,R,null))}
function Df(r,u,f,d,h,b,k){if(I._lock)return;zn(r);let T=kn;if(kn){let C=!0,D=!0,N=10,F,j;P.ori==0?(F=Ke,j=je):(F=je,j=Ke),
F&&j&&(C=be<=N||be>=Z-N,D=Te<=N||Te>=R-N),F&&C&&(be=be<Si?0:Z),j&&D&&(Te=Te<Ti?0:R),Wn(null,!0,!0),kn=!1}be=-10,Te=-10,de.
fill(null),Wn(null,!0,!0),T&&(kn=T)}function zs(r,u,f,d,h,b,k){I._lock||(zn(r),Or(),el(),r!=null&&oo(Mu,i,be,Te,Z,R,null))}
function Vs(){$.forEach(Mh),Rr(i.width,i.height,!0)}si(xr,qi,Vs);let Ci={};Ci.mousedown=Is,Ci.mousemove=Ls,Ci.mouseup=Hs,
Ci.dblclick=zs,Ci.setSeries=(r,u,f,d)=>{let h=Ne.match[2];f=h(i,u,f),f!=-1&&jt(f,d,!0,!1)},st&&(at(ku,x,Is),at(Ol,x,Ls),
at(Su,x,r=>{zn(r),io(!1)}),at(Tu,x,Df),at(Mu,x,zs),Ql.add(i),i.syncRect=io);let Ho=i.hooks=e.hooks||{};function Ge(r,u,f){
jr?eo.push([r,u,f]):r in Ho&&Ho[r].forEach(d=>{d.call(null,i,u,f)})}(e.plugins||[]).forEach(r=>{for(let u in r.hooks)Ho[u]=
(Ho[u]||[]).concat(r.hooks[u])});let qs=(r,u,f)=>f,Ne=Oe({key:null,setSeries:!1,filters:{pub:Fu,sub:Fu},scales:[O,w[1]?w[1].
scale:null],match:[Iu,Iu,qs],values:[null,null]},I.sync);Ne.match.length==2&&Ne.match.push(qs),I.sync=Ne;let Ws=Ne.key,tl=Nc(
Ws);function oo(r,u,f,d,h,b,k){Ne.filters.pub(r,u,f,d,h,b,k)&&tl.pub(r,u,f,d,h,b,k)}tl.sub(i);function Lf(r,u,f,d,h,b,k){
Ne.filters.sub(r,u,f,d,h,b,k)&&Ci[r](null,u,f,d,h,b,k)}i.pub=Lf;function Nf(){tl.unsub(i),Ql.delete(i),Rn.clear(),Bl(xr,
qi,Vs),m.remove(),ce?.remove(),Ge("destroy")}i.destroy=Nf;function nl(){Ge("init",e,t),bs(t||e.data,!1),V[O]?Gr(O,V[O]):
Or(),Do=ye.show&&(ye.width>0||ye.height>0),Hn=Mt=!0,Rr(e.width,e.height)}return w.forEach(vs),$.forEach(df),n?n instanceof
HTMLElement?(n.appendChild(m),nl()):n(i,nl):nl(),i}Ze.assign=Oe;Ze.fmtNum=is;Ze.rangeNum=kr;Ze.rangeLog=Mr;Ze.rangeAsinh=
ts;Ze.orient=ui;Ze.pxRatio=ue;Ze.join=vm;Ze.fmtDate=rs,Ze.tzDate=Cm;Ze.sync=Nc;{Ze.addGap=ch,Ze.clipGaps=Pr;let e=Ze.paths=
{points:zc};e.linear=qc,e.stepped=ph,e.bars=mh,e.spline=gh}var Kc=150;function Lr(e,t){e.style.color=t;let n=getComputedStyle(e).color;return e.style.color="",n}function Eh(e,t){if(e===
null||t===null)return[0,1];let n=Math.max((t-e)*.15,t*.05,1);return[Math.max(0,e-n),t+n]}function Ch({data:[e]}){let t=e.
at(-1)??Date.now()/1e3;return[Math.min(e[0]??t,t-60),t]}function ds({data:e}){let t=e[1]??[];for(let n=t.length-1;n>=0;--n)
if(t[n]!=null)return n}var Ph=e=>{let t=ds(e);return t===void 0?null:[t]};function Ah(e,t){let n=Lr(e,"var(--muted)"),i={
stroke:Lr(e,"var(--line)"),width:1},o=Lr(e,`var(${t.colour})`),s=Lr(e,`color-mix(in srgb, var(${t.colour}) 14%, transpar\
ent)`),a="11px system-ui, sans-serif";return{width:Math.max(100,e.clientWidth),height:Kc,padding:[8,null,null,null],legend:{
show:!1},cursor:{y:!1,sync:{key:"history"},points:{size:6},drag:{x:!1,y:!1}},scales:{x:{range:Ch},y:{range:(c,p,m)=>Eh(p,
m)}},tzDate:c=>Ve.peek()==="utc"?Ze.tzDate(new Date(c*1e3),"UTC"):new Date(c*1e3),axes:[{stroke:n,font:a,grid:i,ticks:{show:!1},
size:24,space:76,values:$h},{stroke:n,font:a,grid:i,ticks:{show:!1},size:72,space:28,incrs:t.steps,values:(c,p)=>ds(c)===
void 0?[]:p.map(t.format)}],series:[{},{stroke:o,width:1.6,fill:s,points:{show:!1,filter:Ph,size:6,fill:o}}]}}var $h=[[3600,
"{HH}:{mm}",null,null,null,null,null,null,1],[60,"{HH}:{mm}",null,null,null,null,null,null,1],[1,"{HH}:{mm}:{ss}",null,null,
null,null,null,null,1]];function Dh(e,t,{format:n,empty:i}){if(!t)return;let o=ds(e),s=e.cursor.idx??o,a=s===void 0?void 0:
e.data[1]?.[s],c=s===void 0?void 0:e.data[0][s];o===void 0?t.textContent=i:a==null||c===void 0?t.textContent="":s===o?t.
textContent=n(a):t.textContent=`${n(a)} at ${dr(c*1e3,Ve.peek())}`}function ps(e){let t=Re(null),n=Re(null),i=Re(null),o=[
e.times,e.values],s=`${pn.value} ${Ve.value} ${au.value}`;return Ce(()=>{let a=t.current;if(!a)return;let c=Ah(a,e),p=_=>Dh(
_,n.current,e);c.hooks={ready:[p],setCursor:[p],setData:[p]};let m=new Ze(c,o,a);i.current=m;let g=new ResizeObserver(()=>{
a.clientWidth>0&&m.setSize({width:a.clientWidth,height:Kc})});return g.observe(a),()=>{g.disconnect(),m.destroy()}},[s]),
Ce(()=>i.current?.setData(o)),l("figure",{class:"chart",children:[l("figcaption",{children:[e.title," ",l("span",{class:"\
readout",ref:n})]}),l("div",{ref:t,role:"img","aria-label":e.label})]})}var Lh=[["10 min",600],["1 h",3600],["all",Number.POSITIVE_INFINITY]],Nh=Array.from({length:12},(e,t)=>[1,2,5].map(n=>n*
10**t)).flat(),Rh=86400,Oh=[1,2,5,10,30,60,120,300,600,1800,3600,7200,21600,43200].concat([1,2,5,10,20,50,100,200,500,1e3,
5e3,1e4].map(e=>e*Rh));function jc(e,t,n){return e.map(i=>{let o=i.queues.get(t);return o?n(o)??null:null})}function Gc(e,t,n){
let i=t.filter(c=>c!==null),o=i.at(-1);if(o===void 0)return`${e}: nothing yet`;let s=n(Math.min(...i)),a=n(Math.max(...i));
return`${e}: now ${n(o)}, between ${s} and ${a}`}function Yc({range:e}){return l("fieldset",{class:"choices",children:[l(
"legend",{class:"unseen",children:"Time shown"}),Lh.map(([t,n])=>l("button",{type:"button","aria-pressed":e.value===n,onClick:()=>e.
value=n,children:t},t))]})}function Qc({queue:e,seconds:t}){let n=Date.now()/1e3,i=cn.value.filter(c=>n-c.time<=t),o=i.map(
c=>c.time),s=jc(i,e,c=>c.count),a=jc(i,e,c=>c.oldestAge);return l(me,{children:[l(ps,{title:"Events",label:Gc("Events in\
 the queue",s,G),colour:"--accent",times:o,values:s,format:G,steps:Nh,empty:"not seen yet"}),l(ps,{title:"Age of the old\
est",label:Gc("Age of the oldest event",a,hn),colour:"--second",times:o,values:a,format:nu,steps:Oh,empty:"nothing waits"})]})}function Qi({name:e,children:t,note:n}){return l("div",{class:"card figure-card",children:[l("dt",{children:e}),l("dd",{
class:"figure",children:t}),l("dd",{class:"note",children:n})]})}function Fh(e){let t=e.flatMap(n=>n.oldest===void 0?[]:
[Number(n.oldest)]);return t.length>0?Math.min(...t):void 0}function Ih({now:e}){let t=Fh(e.queues),n=e.queues.reduce((c,p)=>c+
p.damaged,0),i=e.queues.length,o=e.rates?.written?.["1m"]??0,s=e.rates?.deleted?.["1m"]??0,a=Ll(o,s);return l("dl",{class:"\
figures",children:[l(Qi,{name:"Events in the queues",note:n>0?`${G(n)} of them damaged`:`in ${i} queue${i===1?"":"s"}`,children:G(
e.count)}),l(Qi,{name:"Age of the oldest",note:t===void 0?"nothing waits":`since ${ot(t,Ve.value)}`,children:t===void 0?
"–":Fi(t)}),l(Qi,{name:"Written",note:"mean of the last minute",children:a(o)}),l(Qi,{name:"Deleted",note:"mean of the\
 last minute",children:a(s)}),l(Qi,{name:"Waiting readers",note:`${G(e.connections)} connection${e.connections===1?"":"s"}`,
children:G(e.waiting)}),l(Qi,{name:"Running for",note:`${e.version}, durability ${e.durability}`,children:hn(Date.now()/
1e3-e.startTime)})]})}function Hh({now:e}){let t=e.rates?.byType??{},n=Object.keys(t).filter(s=>!$n.some(a=>a===s)),i=Math.
max(...Object.values(t),Number.MIN_VALUE),o=Ll(i);return l("section",{class:"card","aria-labelledby":"rates-title",children:[
l("h2",{id:"rates-title",children:"Written by kind"}),l("table",{class:"rates",children:[l("thead",{class:"unseen",children:l(
"tr",{children:[l("th",{scope:"col",children:"Kind"}),l("th",{scope:"col",children:"Share"}),l("th",{scope:"col",children:"\
Rate"})]})}),l("tbody",{children:[...$n,...n].map(s=>l("tr",{children:[l("th",{scope:"row",children:l(vn,{name:s})}),l("\
td",{class:"bar-cell","aria-hidden":"true",children:l("div",{class:"bar","data-kind":s,children:l("div",{style:{width:`${100*
(t[s]??0)/i}%`}})})}),l("td",{class:"figure",children:o(t[s]??0)})]},s))})]})]})}function zh(e){let{main:t,details:n}=hr(
e);return[t,...n.slice(0,1)].join(", ")}function Vh(){let e=Je.value.slice(0,8);return l("section",{class:"card","aria-l\
abelledby":"newest-title",children:[l("h2",{id:"newest-title",children:["Newest events",lt.value==="0"?"":` of ${lt.value}`]}),
e.length===0?l("p",{class:"muted",children:"None have been seen yet."}):null,l("ul",{class:"newest",children:e.map(t=>l(
"li",{children:l("a",{href:`#/events/${t.dsid}/${t.id}`,onClick:n=>{n.preventDefault(),Di(String(t.dsid),String(t.id))},
children:[l("span",{class:"when",children:iu(t.date,Ve.value)}),l(vn,{name:t.kind}),l("span",{class:"what",children:_e(zh(
t))})]})},`${t.dsid}/${t.id}`))})]})}function Jc(){let e=Pn("all"),t=Pn(600),n=ze.value;return n?l("div",{class:"overvie\
w",children:[l("h2",{class:"unseen",children:"Overview"}),l(Ih,{now:n}),l("div",{class:"stack",children:[l("section",{class:"\
card charts","aria-labelledby":"charts-title",children:[l("div",{class:"card-head",children:[l("h2",{id:"charts-title",children:"\
While this page is open"}),l(Yc,{range:t}),l("label",{children:[l("span",{class:"unseen",children:"Queue of the charts"}),
l("select",{value:e.value,onChange:i=>e.value=i.currentTarget.value,children:[l("option",{value:"all",children:"all queu\
es"}),n.queues.map(i=>l("option",{value:String(i.dsid),children:Hi(i)},i.dsid))]})]})]}),l(Qc,{queue:e.value,seconds:t.value})]}),
l(Vh,{})]}),l("div",{class:"stack",children:[l("section",{class:"card","aria-labelledby":"near-title",children:[l("h2",{
id:"near-title",children:"Near the limits"}),l(vr,{now:n})]}),l(Hh,{now:n})]})]}):l("p",{class:"empty",children:"Waiting\
 for the first figures …"})}function qh(e){let t=n=>{let i=$n.indexOf(n);return i<0?$n.length:i};return Object.entries(e.types).sort(([n],[i])=>t(n)-
t(i))}function Wh({queue:e}){let t=qh(e);if(e.count===0)return l("span",{class:"muted",children:"empty"});let n=t.map(([
i,o])=>`${i} ${G(o)}`).join(", ");return l("div",{class:"mixture",role:"img","aria-label":n,title:n,children:t.map(([i,o])=>l(
"div",{"data-kind":i,style:{flexGrow:o}},i))})}function Uh({queue:e}){return l("tr",{children:[l("th",{scope:"row",children:[
l("a",{href:"#/events",onClick:n=>{n.preventDefault(),lt.value=String(e.dsid),Yn("events")},children:Hi(e)}),e.known?null:
l("span",{class:"badge warn",children:"not known"})]}),l("td",{class:"figure number",children:G(e.count)}),l("td",{class:"\
figure",children:e.oldest===void 0?"–":Fi(e.oldest)}),l("td",{class:e.damaged>0?"figure number problem":"figure number",
children:G(e.damaged)}),l("td",{class:"figure",children:e.newest===void 0?"–":ot(e.newest,Ve.value)}),l("td",{class:"f\
igure number",children:G(e.highestId)}),l("td",{class:"figure number",children:e.type??"–"}),l("td",{class:"wide",children:l(
Wh,{queue:e})})]})}function Zc(){let e=ze.value?.queues??[];return l("section",{class:"card","aria-labelledby":"queues-t\
itle",children:[l("h2",{id:"queues-title",children:"Queues"}),l("p",{class:"muted",children:"The global queue and the qu\
eues of the data selections."}),l("div",{class:"scroll",tabIndex:0,role:"region","aria-label":"Table of the queues",children:l(
"table",{class:"data",children:[l("thead",{children:l("tr",{children:[l("th",{scope:"col",children:"queue"}),l("th",{scope:"\
col",class:"number",children:"events"}),l("th",{scope:"col",children:"oldest"}),l("th",{scope:"col",class:"number",children:"\
damaged"}),l("th",{scope:"col",children:"newest"}),l("th",{scope:"col",class:"number",children:"highest id"}),l("th",{scope:"\
col",class:"number",children:"type"}),l("th",{scope:"col",children:"kinds"})]})}),l("tbody",{children:e.map(t=>l(Uh,{queue:t},
t.dsid))})]})})]})}var ms=!1;Qe(()=>{it.value.is==="down"?ms=!0:it.value.is==="up"&&ms&&(ms=!1,gn("The server answers again."))});function Bh({
since:e}){let t=ze.value?" What you see below is what it said last.":"";return l("div",{class:"banner bad",role:"alert",
children:[l("p",{children:[l("strong",{children:"The server does not answer"})," since ",dr(e,Ve.value),". The page keep\
s trying.",t]}),l("button",{type:"button",onClick:Qn,children:"Try now"})]})}function Xc({title:e,text:t}){return l("div",
{class:"banner warn",role:"alert",children:l("p",{children:[l("strong",{children:e})," ",t]})})}function Kh({at:e}){return l(
"div",{class:"banner",role:"status",children:[l("p",{children:["The server was started again at ",ot(e,Ve.value),"."]}),
l("button",{type:"button",onClick:()=>dn.value=void 0,children:"Close"})]})}function ef(){let e=it.value;return e.is==="\
down"?l(Bh,{since:e.since}):Pe.value==="out"?null:l(me,{children:[e.is==="troubled"?l(Xc,{title:"The server has trouble.",
text:e.why}):null,Ni.value?l(Xc,{title:"The queue is not ready.",text:Ni.value}):null,dn.value===void 0?null:l(Kh,{at:dn.
value})]})}function jh(e){if(e==="queues"&&ze.value?.queues.some(n=>n.damaged>0))return"damaged events";let t=en.value?.members??[];
if(e==="cluster"&&t.some(n=>!n.reachable))return"a member does not answer"}function Gh({text:e}){return e?l("span",{class:"\
dot",role:"img","aria-label":e,title:e}):null}function Yh(e){return e==="check"?lr("admin"):e==="cluster"?en.value!==void 0||
Xt.value==="cluster":!0}function Qh(){let e=Re(null);return Ce(()=>{e.current?.querySelector("[aria-current]")?.scrollIntoView(
{block:"nearest",inline:"nearest"})},[Xt.value,Pe.value]),e}function Jh(){let e=Qh();return Pe.value!=="in"?null:l("nav",
{ref:e,"aria-label":"Views",children:po.filter(Yh).map(t=>l("a",{href:`#/${t}`,"aria-current":Xt.value===t?"page":void 0,
onClick:n=>{n.preventDefault(),Yn(t)},children:[er[t],l(Gh,{text:jh(t)})]},t))})}var Zh={unknown:["connecting",""],up:["\
connected","ok"],down:["no answer","bad"],troubled:["in trouble","warn"]};function Xh(){let[e,t]=Zh[it.value.is];return l(
"span",{class:`state ${t}`,"data-testid":"state",children:e})}function eg(){if(!fn.value)return null;let{name:e,role:t,via:n}=fn.
value;return l("div",{class:"identity",children:[l("span",{title:`known by ${n}`,children:[e?l("span",{class:"name",children:e}):
null," ",l("span",{class:"role",children:t})]}),$a.value?l("button",{type:"button",class:"plain",onClick:La,children:"Lo\
g out"}):null]})}function tf(){return l("header",{children:[l("div",{class:"title",children:[l(Dn,{name:"mark"}),l("h1",
{children:"eventd"}),l("span",{class:"host",children:location.host})]}),Pe.value==="out"?null:l(Xh,{}),l(Jh,{}),l("div",
{class:"tools",children:[l("button",{type:"button",class:"icon",onClick:ar,"aria-label":`Theme: ${pn.value}`,title:`Them\
e: ${pn.value}`,children:l(Dn,{name:pn.value})}),l("button",{type:"button",class:"icon","aria-label":"Help and shortcuts",
title:"Help and shortcuts (?)",onClick:()=>Ii.value=!0,children:l(Dn,{name:"help"})}),l(eg,{})]})]})}function tg(){return document.querySelector("link[rel=license]")?.href}function nf(){let e=()=>Ii.value=!1;return l(mr,{
open:Ii.value,title:"Help",onClose:e,children:[l("p",{children:"This page shows the event queues of this server as they \
are. It asks for the figures every two seconds; events arrive as they are stored."}),l("table",{class:"shortcuts",children:[
l("caption",{children:"Shortcuts"}),l("tbody",{children:pu.map(([t,n])=>l("tr",{children:[l("th",{scope:"row",children:l(
"kbd",{children:t})}),l("td",{children:n})]},t))})]}),l("label",{class:"choice",children:[l("input",{type:"checkbox",checked:vo.
value==="on",onChange:t=>vo.value=t.currentTarget.checked?"on":"off"}),"Shortcuts of single keys"]}),l("p",{class:"muted",
children:["Programs have the same from ",l("a",{href:"/openapi.json",children:"the server's API"}),". Parts of this page\
 are the work of others, under ",l("a",{href:tg(),children:"their licences"}),"."]}),l("div",{class:"actions",children:l(
"button",{type:"button",onClick:e,children:"Close"})})]})}var ng={overview:Jc,events:gu,queues:Zc,limits:_u,check:ru,cluster:lu};function ig(){if(Pe.value==="out")return l(bu,{});
if(Pe.value==="starting"||!fn.value)return l("p",{class:"empty",role:"status",children:it.value.is==="unknown"?"Asking t\
he server …":"Waiting for the server …"});let e=ng[Xt.value];return l(e,{})}function of(){return Ce(mu,[]),l(me,{children:[
l("a",{class:"skip",href:"#main",onClick:og,children:"Skip to the content"}),l(tf,{}),l(ef,{}),l("main",{id:"main",tabIndex:-1,
children:l(ig,{})}),l(nf,{}),l("div",{class:"unseen",role:"status","aria-live":"polite",children:pr.value})]})}function og(e){
e.preventDefault(),document.getElementById("main")?.focus()}function rg(){Va(),Tl()||Da(),addEventListener("hashchange",()=>{Tl()&&go().catch(()=>{}).finally(Qn)}),addEventListener(
"online",Qn),document.addEventListener("visibilitychange",()=>{document.visibilityState==="visible"&&Qn()}),Qe(()=>{Pe.value===
"out"&&Ha(),Pe.value==="in"&&Qn()}),Qe(()=>{let t=it.value.is==="down"?"no answer – ":"",n=Pe.value==="in"?` – ${er[Xt.
value]}`:"";document.title=`${t}eventd ${location.host}${n}`}),eu(),Ia();let e=document.getElementById("page");e&&ia(l(of,
{}),e)}rg();
